#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>

#include "failures.h"
#include "output.h"
#include "session.h"
#include "vel/core/string.h"

namespace cli {

/// The text that a subcommand works on: one given as argument, or with "-" every line of standard input.
class TextArgument
{
public:
    /// Answers one text on the output; whether it had a result.
    using Answer = std::function<bool(const vel::String& text)>;

    /// `name` as help and errors show it, such as "HEADER". Returns the argument, which is required.
    CLI::Option* addTo(CLI::App& app, const std::string& name, const std::string& description);

    /// Whether there is one; always, where it is required.
    bool isGiven() const noexcept { return m_tText.has_value(); }

    /// Calls `answer` for the given text: success when it had a result; or for every line of standard input: success. A
    /// lone
    /// "-" after "--" is a text. Throws UsageError for input that is no UTF-8.
    ExitCode forEach(const Session& session, Output& output, const Answer& answer) const;

private:
    static ExitCode answerLines(Output& output, const Answer& answer);

    std::optional<std::string> m_tText;
};

}  // namespace cli
