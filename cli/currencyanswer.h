#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "answers/captions.h"
#include "output.h"
#include "session.h"
#include "webi18n/currency.h"

namespace cli {

/// What is told about currencies, in the language of whoever asks.
class CurrencyAnswer
{
public:
    /// Adds --locale and --language.
    void addTo(CLI::App& app);

    /// Before the first answer. False, and the reason is said, when the given locale is not allowed.
    bool prepare(Session& session);
    /// Answers with everything that the currency holds.
    void answer(const vel::Currency& currency, Session& session, Output& output);

private:
    std::string m_sLocale;
    std::string m_sLanguage;
    std::optional<answers::Captions> m_tCaptions;
    bool m_bLocalesKnown = false;
};

}  // namespace cli
