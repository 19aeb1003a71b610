#include "check/properties.h"

#include <optional>
#include <string>
#include <vector>

#include "check/patterns.h"
#include "check/separators.h"
#include "text.h"
#include "webi18n/locale.h"

namespace cli {

namespace {

using vel::Locale;
using vel::String;
using vel::XmlElement;

const std::vector<String>& knownNames()
{
    static const std::vector<String> kNames = [] {
        std::vector<String> names = {L"currencyDigits", L"24hours", L"dateOrder", L"firstDayOfWeek", L"scaleFactors"};
        for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
            names.push_back(Locale::stringInfoMap().find(static_cast<Locale::StringInfo>(info)));
        }
        for (unsigned type = 0; type < Locale::kNameTypeEnd_; ++type) {
            names.push_back(Locale::nameTypeMap().find(static_cast<Locale::NameType>(type)));
        }
        return names;
    }();
    return kNames;
}

bool isDigits(std::wstring_view text) noexcept
{
    return !text.empty() && text.find_first_not_of(L"0123456789") == text.npos;
}

bool isSeparator(Locale::StringInfo info) noexcept
{
    return info >= Locale::kTimeSeparator && info <= Locale::kListSeparator;
}

std::optional<Problem> checkWhiteSpace(std::wstring_view name, std::wstring_view text)
{
    if (String::trim(text).size() == text.size()) {
        return std::nullopt;
    }
    return Problem{kMinorWarning, "white-space",
                   utf8Text(name) + " begins or ends with white space, which belongs to the value: write the value " +
                       "right between the tags"};
}

/// A marker or a name of a month or day. Typed texts are compared with markers at each of their letters.
std::optional<Problem> checkLength(std::wstring_view name, std::wstring_view text)
{
    constexpr std::size_t kMost = 64;
    if (text.size() <= kMost) {
        return checkWhiteSpace(name, text);
    }
    return Problem{kWarning, "long-text",
                   utf8Text(name) + " has " + std::to_string(text.size()) +
                       " characters, which nobody types or reads: " + "write at most " + std::to_string(kMost)};
}

std::optional<Problem> checkTemplate(std::wstring_view name, std::wstring_view text)
{
    if (text.empty() || text.find(L'#') != text.npos) {
        return std::nullopt;
    }
    return Problem{kWarning, "missing-token",
                   utf8Text(name) + " " + quotedName(text) + " lacks #, the place of the number"};
}

std::optional<Problem> checkStringValue(Locale::StringInfo info, std::wstring_view name, std::wstring_view text)
{
    if (isSeparator(info)) {
        return checkSeparator(name, text);
    }
    if (info == Locale::kAM || info == Locale::kPM) {
        return checkLength(name, text);
    }
    if (auto problem = checkWhiteSpace(name, text)) {
        return problem;
    }
    if (text.empty()) {
        return std::nullopt;
    }
    switch (info) {
    case Locale::kDateShortFormat:
    case Locale::kDateLongFormat:
        return checkFormat(kDateFormat, name, text);
    case Locale::kTimeFormat:
        return checkFormat(kTimeFormat, name, text);
    case Locale::kNegativeNumberTemplate:
    case Locale::kPercentFormat:
        return checkTemplate(name, text);
    default:
        return std::nullopt;
    }
}

std::optional<Problem> checkString(Locale::StringInfo info, std::wstring_view name, std::wstring_view text)
{
    if (info == Locale::kDateInputFormat || info == Locale::kTimeInputFormat) {
        const bool isDate = info == Locale::kDateInputFormat;
        return Problem{kMinorWarning, "derived-property",
                       utf8Text(name) + " has no effect, as it is always built from " +
                           (isDate ? "dateSeparator and dateOrder" : "timeSeparator and 24hours") +
                           ": set those, and leave it out"};
    }
    return checkStringValue(info, name, text);
}

std::optional<Problem> checkDateOrder(std::wstring_view text)
{
    if (Locale::dateOrderMap().find(text) != Locale::kDateOrderEnd_) {
        return std::nullopt;
    }
    return Problem{kWarning, "invalid-date-order",
                   "dateOrder " + quotedName(text) + " is read as mdy: write mdy, dmy or ymd"};
}

std::optional<Problem> checkFirstDay(std::wstring_view text)
{
    const std::wstring_view number = String::trim(text);
    if (number.size() == 1 && number[0] >= L'0' && number[0] <= L'6') {
        return checkWhiteSpace(L"firstDayOfWeek", text);
    }
    const bool isTooHigh = isDigits(number);
    return Problem{kWarning, "invalid-first-day",
                   "firstDayOfWeek " + quotedName(text) + (isTooHigh ? " is above 6" : " is no number") +
                       ": write 0 (Monday) to 6 (Sunday)"};
}

std::optional<Problem> checkClock(std::wstring_view text)
{
    if (text == L"true" || text == L"false") {
        return std::nullopt;
    }
    return Problem{kWarning, "invalid-clock", "24hours " + quotedName(text) + " is read as false: write true or false"};
}

std::optional<Problem> checkCurrencyDigits(std::wstring_view text)
{
    if (isDigits(String::trim(text))) {
        return checkWhiteSpace(L"currencyDigits", text);
    }
    return Problem{kWarning, "invalid-currency-digits",
                   "currencyDigits " + quotedName(text) + " is no number: write 0, 2 or 3 as the currency has it"};
}

/// The value of a scalar property; nothing when there is nothing wrong with it or it is no scalar.
std::optional<Problem> checkScalar(std::wstring_view name, const String& text)
{
    if (const Locale::StringInfo info = Locale::stringInfoMap().find(name); info != Locale::kStringInfoEnd_) {
        return checkString(info, name, text);
    }
    if (name == L"dateOrder") {
        return checkDateOrder(text);
    }
    if (name == L"firstDayOfWeek") {
        return checkFirstDay(text);
    }
    return name == L"24hours" ? checkClock(text) : checkCurrencyDigits(text);
}

bool isList(std::wstring_view name) noexcept
{
    return name == L"scaleFactors" || Locale::nameTypeMap().find(name) != Locale::kNameTypeEnd_;
}

bool isKnown(std::wstring_view name) noexcept
{
    return isList(name) || Locale::stringInfoMap().find(name) != Locale::kStringInfoEnd_ || name == L"dateOrder" ||
           name == L"firstDayOfWeek" || name == L"24hours" || name == L"currencyDigits";
}

std::optional<Problem> checkEntry(std::wstring_view list, const XmlElement& entry, std::wstring_view text)
{
    if (list == L"scaleFactors" && entry.attribute(L"name").empty()) {
        return Problem{kMinorWarning, "entry-without-name",
                       "the scale factor " + quotedName(text) + " has no name to be shown by: name it"};
    }
    switch (Locale::nameTypeMap().find(list)) {
    case Locale::kDateFormats:
        return checkFormat(kDateEntry, L"date format", text);
    case Locale::kTimeFormats:
        return checkFormat(kTimeEntry, L"time format", text);
    case Locale::kDateTimeFormats:
        return checkFormat(kDateTimeEntry, L"date and time format", text);
    case Locale::kNameTypeEnd_:  // a scale factor
        return std::nullopt;
    default:
        return checkLength(L"an entry of " + std::wstring(list), text);
    }
}

Problem emptyEntry(std::wstring_view list)
{
    return {kWarning, "empty-entry",
            "an empty entry of " + utf8Text(list) + " is dropped, and those after it move up: write its text"};
}

/// How many names the list has to have; 0 for lists of any length.
std::size_t expectedCount(std::wstring_view list) noexcept
{
    const Locale::NameType type = Locale::nameTypeMap().find(list);
    if (type == Locale::kDay || type == Locale::kAbbreviatedDay) {
        return 7;
    }
    return type <= Locale::kAbbreviatedMonth ? 12 : 0;
}

/// What checking the entries of a list one by one has shown.
struct Entries
{
    std::size_t m_nCount = 0;
    bool m_bFaulty = false;
};

Entries checkEntries(const XmlElement& list, std::wstring_view name, Findings& findings)
{
    Entries entries;
    for (const XmlElement& entry : vel::children(list)) {
        const String text = entry.innerText();
        std::optional<Problem> problem;
        if (entry.name() != L"property") {
            problem = Problem{kWarning, "skipped-element",
                              "<" + visibleText(entry.name()) + "> in " + utf8Text(name) +
                                  " is skipped: entries are <property> elements"};
        } else {
            ++entries.m_nCount;
            problem = text.isEmpty() ? emptyEntry(name) : checkEntry(name, entry, text);
        }
        if (!problem && !text.isEmpty()) {
            problem = checkWhiteSpace(L"an entry of " + std::wstring(name), text);
        }
        if (problem) {
            entries.m_bFaulty = entries.m_bFaulty || text.isEmpty() || entry.name() != L"property";
            findings.add(entry, std::move(*problem));
        }
    }
    return entries;
}

void checkList(const XmlElement& element, std::wstring_view name, Findings& findings)
{
    const Entries entries = checkEntries(element, name, findings);
    const bool isTextOnly = element.firstChild() == nullptr && !element.innerText().trimmed().isEmpty();
    if (isTextOnly) {
        findings.add(element, {kWarning, "text-in-list",
                               utf8Text(name) + " is a list, and its own text is ignored: write each entry as a " +
                                   "<property> element"});
        return;
    }
    const std::size_t expected = expectedCount(name);
    // An empty list of genitive names takes back those of the base: the nominative ones count then.
    const bool isTakenBack = entries.m_nCount == 0 && name == L"genetiveMonthNames";
    if (expected == 0 || entries.m_nCount == expected || entries.m_bFaulty || isTakenBack) {
        return;
    }
    findings.add(element, {kWarning, "name-count",
                           utf8Text(name) + " has " + std::to_string(entries.m_nCount) +
                               (entries.m_nCount == 1 ? " entry" : " entries") + " instead of " +
                               std::to_string(expected) + (expected == 7 ? ", Monday first" : ", January first")});
}

std::optional<Problem> checkName(const XmlElement& element)
{
    if (element.name() != L"property") {
        return Problem{kWarning, "skipped-element",
                       "<" + visibleText(element.name()) + "> is skipped: a definition holds <property> elements"};
    }
    const std::wstring_view name = element.attribute(L"name");
    if (name.empty()) {
        return Problem{kWarning, "property-without-name", "a property without a name is skipped: name it"};
    }
    if (!isKnown(name)) {
        return Problem{kWarning, "unknown-property",
                       "property " + quotedName(name) + " is unknown and skipped; " +
                           suggestion(name, knownNames(), "correct its name or leave it out")};
    }
    return std::nullopt;
}

}  // namespace

void checkProperty(const XmlElement& element, Findings& findings)
{
    if (auto problem = checkName(element)) {
        findings.add(element, std::move(*problem));
        return;
    }
    const std::wstring_view name = element.attribute(L"name");
    if (isList(name)) {
        checkList(element, name, findings);
        return;
    }
    if (auto problem = checkScalar(name, element.innerText())) {
        findings.add(element, std::move(*problem));
    }
}

}  // namespace cli
