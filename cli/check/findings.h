#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "output.h"
#include "vel/core/string.h"
#include "vel/xml/xmlelement.h"
#include "vel/xml/xmlexception.h"

namespace cli {

/// How much a finding matters: from what is only said, over what may be meant, to what makes a file unusable.
enum Severity
{
    kInformation,
    kMinorWarning,
    kWarning,
    kError
};

/// What a rule says of a place that it is told.
struct Problem
{
    Severity m_eSeverity;
    const char* m_pRule;     ///< the rule's identifier, such as "unknown-property"
    std::string m_sMessage;  ///< what is wrong and how to mend it; UTF-8
};

/// The findings, a line each, file by file and within a file by place.
class Findings
{
public:
    explicit Findings(Output& output) noexcept : m_tOutput(output) {}

    /// What is added up to end() is of this file; with `reported` false it is dropped, as the file is only read for
    /// what others need of it.
    void begin(const vel::String& file, bool reported);
    void add(const vel::XmlElement& place, Problem problem);
    /// The same of a place outside the elements; line and column from 1.
    void add(std::uint32_t line, std::uint32_t column, Problem problem);
    /// Writes what was found since begin().
    void end();
    /// A file that cannot be read, outside begin() and end().
    void addUnreadable(const vel::XmlException& fault);
    /// A finding that has no place in a file; `source` says what it is about.
    void addWithoutPlace(const std::string& source, const Problem& problem);

    bool isEmpty() const noexcept { return m_bEmpty; }

private:
    struct Placed
    {
        std::uint32_t m_nLine;
        std::uint32_t m_nColumn;
        Problem m_tProblem;
    };
    void write(const std::string& file, const Placed& finding);

    Output& m_tOutput;
    std::string m_sFile;
    std::vector<Placed> m_vPlaced;
    bool m_bReported = true;
    bool m_bEmpty = true;
};

/// The text as messages show it: on one line, between apostrophes, cut where it is long.
std::string quotedName(std::wstring_view text);

/// The name among `known` that the text was probably meant to be: the same in another letter case, or few letters
/// apart; empty when there is none.
///
///     "decimalseparator" -> decimalSeparator    "genitiveMonthNames" -> genetiveMonthNames    "colour" -> (none)
vel::String similarName(std::wstring_view text, const std::vector<vel::String>& known);

/// "; did you mean 'x'?", or the other text when there is nothing similar.
std::string suggestion(std::wstring_view text, const std::vector<vel::String>& known, const std::string& otherwise);

}  // namespace cli
