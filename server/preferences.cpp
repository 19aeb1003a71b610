#include "preferences.h"

#include <algorithm>
#include <cwctype>
#include <optional>

#include "answers/useroverrides.h"
#include "http.h"
#include "serverlimits.h"

namespace server {

namespace {

constexpr std::string_view ksCookieName = "webi18n";

/// Without its cookie the client's next request is served: nobody is locked out by a preference of old.
Refusal badCookie(unsigned status, std::string text, const std::string& key = {})
{
    return {
        status, "bad-cookie", std::move(text), {{"Set-Cookie", "webi18n=; Path=/; Max-Age=0; SameSite=Strict"}}, key};
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t end = text.find_last_not_of(" \t") + 1;
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

/// The value of our cookie, without the quotation marks that it may stand in.
std::optional<std::string_view> valueIn(std::string_view header)
{
    std::optional<std::string_view> value;
    while (!header.empty()) {
        const std::string_view part = header.substr(0, header.find(';'));
        header.remove_prefix(part.size() == header.size() ? part.size() : part.size() + 1);
        const std::string_view pair = trimmed(part);
        if (pair.substr(0, pair.find('=')) != ksCookieName || pair.size() == ksCookieName.size()) {
            continue;
        }
        if (value) {
            throw badCookie(400, "The preferences' cookie stands twice.");
        }
        value = pair.substr(ksCookieName.size() + 1);
    }
    if (value && value->size() >= 2 && value->front() == '"' && value->back() == '"') {
        value = value->substr(1, value->size() - 2);
    }
    return value;
}

bool isControl(wchar_t character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 || character == 0x2029;
}

bool isSeparator(std::string_view key)
{
    return key.ends_with("Separator");
}

/// Between the parts of a date or a time letters and apostrophes would be read as a part of its picture, in a number
/// digits as a part of it.
std::string separatorFault(std::string_view key, const vel::String& value)
{
    if (!isSeparator(key)) {
        return {};
    }
    const auto isAlphanumeric = [](wchar_t each) { return std::iswalnum(static_cast<wint_t>(each)) != 0; };
    if (std::any_of(value.begin(), value.end(), isAlphanumeric)) {
        return "may not have letters or digits";
    }
    const bool isInPicture = key == "dateSeparator" || key == "timeSeparator";
    return isInPicture && value.find(L'\'') != vel::String::kNotFound ? "may not have apostrophes" : std::string();
}

/// What is wrong with a preference that stands behind the others; empty when nothing is.
std::string faultOf(const std::string& key, const vel::String& value, const Parameters& before)
{
    const auto isSame = [&](const auto& each) { return each.first == key; };
    const std::string fault =
        std::any_of(before.begin(), before.end(), isSame) ? "stands twice" : preferenceFault(key, value);
    return fault.empty() ? fault : "The preference " + key + " " + fault + ".";
}

}  // namespace

std::string preferenceFault(std::string_view key, const vel::String& value)
{
    if (!answers::isUserOverride(key)) {
        return "is none: the preferences are " + answers::userOverrideNames();
    }
    if (value.isEmpty()) {
        return {};
    }
    if (value.length() > kOverrideLength) {
        return "is longer than " + std::to_string(kOverrideLength) + " characters";
    }
    if (std::any_of(value.begin(), value.end(), &isControl)) {
        return "may not have control characters";
    }
    vel::Locale trial = vel::Locale::kUSA;
    if (const auto accepted = answers::applyUserOverride(key, value, trial)) {
        return "is not accepted: " + *accepted;
    }
    return separatorFault(key, value);
}

Parameters preferencesOf(std::string_view cookieHeader)
{
    const auto value = valueIn(cookieHeader);
    if (!value) {
        return {};
    }
    if (value->size() > kCookieBytes) {
        throw badCookie(431, "The preferences' cookie is too large.");
    }
    Parameters written;
    try {
        written = parametersOf(*value);
    } catch (const Refusal& refusal) {
        throw badCookie(400, "The preferences' cookie cannot be read: " + refusal.m_sText);
    }
    Parameters preferences;
    for (auto& [key, text] : written) {
        if (std::string fault = faultOf(key, text, preferences); !fault.empty()) {
            throw badCookie(400, std::move(fault), key);
        }
        preferences.emplace_back(std::move(key), std::move(text));
    }
    return preferences;
}

Parameters preferencesIn(const Target& target)
{
    Parameters preferences;
    for (const auto& [name, setting] : target.m_tParameters) {
        if (name != "user") {
            continue;
        }
        const std::size_t equals = std::min(setting.find(L'='), setting.length());
        const std::string key = vel::toUtf8Lossy(setting.view().substr(0, equals));
        vel::String value = setting.substring(equals + 1);
        if (std::string fault = faultOf(key, value, preferences); !fault.empty()) {
            throw Refusal{400, "bad-parameter", std::move(fault), {}, key};
        }
        preferences.emplace_back(key, std::move(value));
    }
    return preferences;
}

std::string cookieOf(const Parameters& preferences)
{
    std::string cookie(ksCookieName);
    char separator = '=';
    for (const auto& [key, value] : preferences) {
        cookie += separator + key + "=" + percentEncoded(vel::toUtf8Lossy(value));
        separator = '&';
    }
    return preferences.empty() ? cookie + "=" : cookie;
}

void applyPreferences(const Parameters& preferences, vel::Locale& locale)
{
    for (const auto& [key, value] : preferences) {
        if (!value.isEmpty()) {
            answers::applyUserOverride(key, value, locale);
        }
    }
}

}  // namespace server
