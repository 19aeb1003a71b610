#include "check/currencyattributes.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "text.h"

namespace cli {

namespace {

using vel::String;
using vel::XmlElement;

constexpr std::size_t kLongest = 100;    // characters; what is longer was not meant
constexpr std::size_t kMostDigits = 20;  // behind a decimal separator
constexpr const wchar_t* ksDigits = L"digits";

enum Kind
{
    kName,  // refers to something, or is referred to: white space around it is an accident
    kText,
    kNumber,
    kFlag
};

struct Attribute
{
    const wchar_t* m_pName;
    Kind m_eKind;
    const char* m_pWithout;  // what counts when it is left out
};

constexpr Attribute kAttributes[] = {
    {L"tag", kName, nullptr},
    {L"type", kText, nullptr},
    {L"symbol", kText, nullptr},
    {L"format", kText, "$# of a local and # $ of an international currency"},
    {ksDigits, kNumber, "as many digits as the number has"},
    {L"locale", kName, "no locale"},
    {L"displayMessage", kName, "no caption"},
    {L"displaymessage", kName, "no caption"},
    {L"displayName", kName, "the caption"},
    {L"display", kFlag, "true"},
    {L"placeholder", kFlag, "false"},
    {L"thousandsSeparator", kFlag, "true"},
};

std::optional<Problem> checkBlank(const Attribute& attribute, std::wstring_view value)
{
    if (!value.empty() || attribute.m_pWithout == nullptr) {
        return std::nullopt;
    }
    return Problem{kMinorWarning, "blank-attribute",
                   utf8Text(attribute.m_pName) + " is blank, so it is " + attribute.m_pWithout +
                       ": write its value or leave it out"};
}

std::optional<Problem> checkLength(const Attribute& attribute, std::wstring_view value)
{
    if (value.size() <= kLongest) {
        return std::nullopt;
    }
    return Problem{kMinorWarning, "over-long",
                   utf8Text(attribute.m_pName) + " " + quotedName(value) + " has " + std::to_string(value.size()) +
                       " characters: has a quotation mark slipped?"};
}

std::optional<Problem> checkName(const Attribute& attribute, std::wstring_view value)
{
    if (String::trim(value).size() == value.size()) {
        return std::nullopt;
    }
    return Problem{
        kMinorWarning, "white-space",
        utf8Text(attribute.m_pName) + " " + quotedName(value) + " begins or ends with white space: take it out"};
}

std::optional<Problem> checkFlag(const Attribute& attribute, std::wstring_view value)
{
    if (value == L"true" || value == L"false" || value == L"1" || value == L"0") {
        return std::nullopt;
    }
    return Problem{kWarning, "invalid-boolean",
                   utf8Text(attribute.m_pName) + " " + quotedName(value) + " is read as " + attribute.m_pWithout +
                       ": write true or false"};
}

/// -1 is what the library itself says for digits that are not given.
std::optional<Problem> checkNumber(const Attribute& attribute, std::wstring_view value)
{
    const std::wstring_view number = value.substr(std::min(value.find_first_not_of(L'0'), value.size()));
    if (value != L"-1" && value.find_first_not_of(L"0123456789") != value.npos) {
        return Problem{kWarning, "invalid-digits",
                       utf8Text(attribute.m_pName) + " " + quotedName(value) +
                           " is no number: write how many digits stand behind the decimal separator"};
    }
    if (number.size() > 2 || (number.size() == 2 && value != L"-1" && std::stoul(std::wstring(number)) > kMostDigits)) {
        return Problem{kWarning, "invalid-digits",
                       utf8Text(attribute.m_pName) + " " + quotedName(value) + " is more than an amount can show: " +
                           "write how many digits stand behind the decimal separator"};
    }
    return std::nullopt;
}

std::optional<Problem> checkKind(const Attribute& attribute, std::wstring_view value)
{
    switch (attribute.m_eKind) {
    case kName:
        return checkName(attribute, value);
    case kNumber:
        return checkNumber(attribute, value);
    case kFlag:
        return checkFlag(attribute, value);
    default:
        return std::nullopt;
    }
}

/// What is first wrong with an attribute explains the rest.
std::optional<Problem> checkAttribute(const Attribute& attribute, std::wstring_view value)
{
    for (const auto check : {&checkBlank, &checkLength, &checkKind}) {
        if (auto problem = check(attribute, value); problem || value.empty()) {
            return problem;
        }
    }
    return std::nullopt;
}

bool isRead(std::wstring_view name) noexcept
{
    return std::any_of(std::begin(kAttributes), std::end(kAttributes),
                       [name](const Attribute& each) { return name == each.m_pName; });
}

/// Attributes that would be read if they were written in the right letter case.
void checkSpelling(const XmlElement& currency, const Attribute& attribute, Findings& findings)
{
    std::wstring lower = attribute.m_pName;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](wchar_t each) { return each >= L'A' && each <= L'Z' ? each + (L'a' - L'A') : each; });
    std::wstring capital = attribute.m_pName;
    capital.front() += L'A' - L'a';
    for (const std::wstring& spelling : {lower, capital}) {
        if (!isRead(spelling) && currency.hasAttribute(spelling)) {
            findings.add(currency, {kWarning, "unknown-attribute",
                                    "attribute " + quotedName(spelling) + " is not read; did you mean " +
                                        quotedName(attribute.m_pName) + "?"});
        }
    }
}

std::optional<Problem> checkToken(const std::string& what, std::wstring_view picture, wchar_t token,
                                  const char* meaning)
{
    const auto count = std::count(picture.begin(), picture.end(), token);
    if (count == 1) {
        return std::nullopt;
    }
    const std::string shown = utf8Text(std::wstring(1, token)) + ", the place of the " + meaning;
    const std::string begin = what + " " + quotedName(picture);
    if (count == 0) {
        return Problem{kWarning, "missing-token", begin + " lacks " + shown};
    }
    return Problem{kWarning, "repeated-token",
                   begin + " has " + shown + ", " + std::to_string(count) + " times: write it once"};
}

}  // namespace

void checkCurrencyAttributes(const XmlElement& currency, Findings& findings)
{
    for (const Attribute& attribute : kAttributes) {
        checkSpelling(currency, attribute, findings);
        if (!currency.hasAttribute(attribute.m_pName)) {
            continue;
        }
        if (auto problem = checkAttribute(attribute, currency.attribute(attribute.m_pName))) {
            findings.add(currency, std::move(*problem));
        }
    }
}

std::optional<Problem> checkPicture(const std::string& what, std::wstring_view picture)
{
    auto problem = checkToken(what, picture, L'#', "number");
    return problem ? problem : checkToken(what, picture, L'$', "symbol");
}

}  // namespace cli
