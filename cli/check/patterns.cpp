#include "check/patterns.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "text.h"

namespace cli {

namespace {

/// The same letter several times in a row, outside apostrophes.
struct Run
{
    wchar_t m_cLetter;
    std::size_t m_nCount;
};

/// The letters that tokens are made of, and how often each may stand.
struct Token
{
    wchar_t m_cLetter;
    std::size_t m_nLongest;
    const char* m_pMeaning;
    bool m_bDate;
};

constexpr Token kTokens[] = {
    {L'd', 4, "days", true},   {L'M', 4, "months", true},   {L'y', 4, "years", true},    {L'h', 2, "hours", false},
    {L'H', 2, "hours", false}, {L'm', 2, "minutes", false}, {L's', 2, "seconds", false}, {L't', 2, "am or pm", false},
};

/// Letters of other pattern languages and what stands for them here.
struct Foreign
{
    wchar_t m_cLetter;
    const char* m_pInstead;
};

constexpr Foreign kForeign[] = {
    {L'Y', "yyyy or yy for the year"},
    {L'u', "yyyy or yy for the year"},
    {L'D', "d or dd for the day"},
    {L'E', "ddd or dddd for the day of the week"},
    {L'e', "ddd or dddd for the day of the week"},
    {L'c', "ddd or dddd for the day of the week"},
    {L'L', "M to MMMM for the month"},
    {L'a', "tt for am or pm"},
    {L'A', "tt for am or pm"},
    {L'b', "tt for am or pm"},
    {L'B', "tt for am or pm"},
    {L'k', "H or HH for the hour"},
    {L'K', "h or hh for the hour"},
    {L'j', "H or HH for the hour"},
    {L'S', "s or ss for the second, without a fraction"},
    {L'f', "s or ss for the second, without a fraction"},
    {L'n', "mm for the minute"},
    {L'N', "MMMM for the month"},
};

bool isLetter(wchar_t character) noexcept
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

/// Splits a format into its runs; false when an apostrophe has no partner.
bool readRuns(std::wstring_view format, std::vector<Run>& runs)
{
    bool isQuoted = false;
    wchar_t before = 0;
    for (const wchar_t character : format) {
        const bool isRunLetter = isLetter(character) && !isQuoted;
        if (character == L'\'') {
            isQuoted = !isQuoted;
        } else if (isRunLetter && character == before) {
            ++runs.back().m_nCount;
        } else if (isRunLetter) {
            runs.push_back({character, 1});
        }
        before = isRunLetter ? character : 0;
    }
    return !isQuoted;
}

const Token* findToken(wchar_t letter) noexcept
{
    for (const Token& token : kTokens) {
        if (token.m_cLetter == letter) {
            return &token;
        }
    }
    return nullptr;
}

bool isToken(const Run& run) noexcept
{
    const Token* token = findToken(run.m_cLetter);
    const bool isYear = run.m_cLetter == L'y';
    return token != nullptr && run.m_nCount <= token->m_nLongest && (!isYear || run.m_nCount == 2 || run.m_nCount == 4);
}

std::string adviceFor(const Run& run)
{
    if (run.m_cLetter == L'y') {
        return "write yyyy or yy";
    }
    if (const Token* token = findToken(run.m_cLetter)) {
        return "it has at most " + std::to_string(token->m_nLongest) + " letters";
    }
    for (const Foreign& foreign : kForeign) {
        if (foreign.m_cLetter == run.m_cLetter) {
            return std::string("write ") + foreign.m_pInstead + ", or put text between apostrophes";
        }
    }
    return "put text between apostrophes";
}

std::string nameOf(const Run& run)
{
    return quotedName(std::wstring(std::min<std::size_t>(run.m_nCount, 20), run.m_cLetter));
}

std::optional<Problem> findForeign(const std::string& where, const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (!isToken(run)) {
            return Problem{kWarning, "foreign-token", nameOf(run) + " in " + where + " is no token: " + adviceFor(run)};
        }
    }
    return std::nullopt;
}

/// A date token in a time format, or the other way round.
std::optional<Problem> findMisplaced(FormatKind kind, const std::string& where, const std::vector<Run>& runs)
{
    if (kind == kDateTimeEntry) {
        return std::nullopt;
    }
    const bool isDate = kind == kDateFormat || kind == kDateEntry;
    for (const Run& run : runs) {
        const Token& token = *findToken(run.m_cLetter);
        if (token.m_bDate == isDate) {
            continue;
        }
        const bool isMinuteOrMonth = run.m_cLetter == L'm' || run.m_cLetter == L'M';
        const char* advice = isMinuteOrMonth ? "months are M to MMMM, minutes m and mm"
                             : isDate        ? "leave the time to the time format"
                                             : "leave the date to the date format";
        std::string message = nameOf(run) + " in " + where;
        message.append(" stands for ").append(token.m_pMeaning).append(": ").append(advice);
        return Problem{kWarning, "misplaced-token", std::move(message)};
    }
    return std::nullopt;
}

bool hasRun(const std::vector<Run>& runs, std::wstring_view letters, std::size_t longest = 4)
{
    for (const Run& run : runs) {
        if (letters.find(run.m_cLetter) != letters.npos && run.m_nCount <= longest) {
            return true;
        }
    }
    return false;
}

/// What a format of the kind lacks; empty when it has all.
std::string findMissing(FormatKind kind, const std::vector<Run>& runs)
{
    const bool isTime = kind == kTimeFormat || kind == kTimeEntry;
    if (runs.empty()) {
        return "any token";
    }
    if (kind == kDateFormat) {
        return !hasRun(runs, L"d", 2) ? "the day (d or dd)"
               : !hasRun(runs, L"M")  ? "the month (M to MMMM)"
               : !hasRun(runs, L"y")  ? "the year (yyyy or yy)"
                                      : "";
    }
    if (kind == kTimeFormat && !hasRun(runs, L"hH")) {
        return "the hour (H or HH, or h with tt)";
    }
    if (kind == kTimeFormat && !hasRun(runs, L"m")) {
        return "the minute (m or mm)";
    }
    return isTime && hasRun(runs, L"h") && !hasRun(runs, L"t") ? "am or pm (tt), which an hour from 1 to 12 needs" : "";
}

}  // namespace

std::optional<Problem> checkFormat(FormatKind kind, std::wstring_view name, std::wstring_view format)
{
    const std::string where = utf8Text(name) + " " + quotedName(format);
    std::vector<Run> runs;
    if (!readRuns(format, runs)) {
        return Problem{kWarning, "unclosed-quote",
                       where + " has an apostrophe without a partner: text stands between two, and '' is one itself"};
    }
    if (auto foreign = findForeign(where, runs)) {
        return foreign;
    }
    if (auto misplaced = findMisplaced(kind, where, runs)) {
        return misplaced;
    }
    if (const std::string missing = findMissing(kind, runs); !missing.empty()) {
        return Problem{kWarning, "missing-token", where + " lacks " + missing};
    }
    return std::nullopt;
}

}  // namespace cli
