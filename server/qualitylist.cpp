#include "qualitylist.h"

#include <algorithm>
#include <optional>

#include "serverlimits.h"

namespace server {

namespace {

constexpr std::string_view ksLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view ksDigits = "0123456789";
constexpr std::string_view ksTokenMarks = "!#$%&'*+-.^_`|~";
constexpr std::size_t kSubtagLength = 8;

bool isOneOf(char character, std::string_view characters)
{
    return characters.find(character) != std::string_view::npos;
}

bool isAlphanumeric(char character)
{
    return isOneOf(character, ksLetters) || isOneOf(character, ksDigits);
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t end = text.find_last_not_of(" \t") + 1;
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

/// 1 to 8 letters, in all but the first subtag also digits; "*" alone.
bool isLanguageRange(std::string_view text)
{
    std::size_t length = 0;
    bool isFirst = true;
    for (const char each : text) {
        if (each == '-') {
            if (length == 0) {
                return false;
            }
            length = 0;
            isFirst = false;
        } else if (++length > kSubtagLength || !(isFirst ? isOneOf(each, ksLetters) : isAlphanumeric(each))) {
            return text == "*";
        }
    }
    return length != 0;
}

bool isToken(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char each) { return isAlphanumeric(each) || isOneOf(each, ksTokenMarks); });
}

/// 0 or 1 with at most three digits behind a point, in thousandths.
std::optional<unsigned> readQuality(std::string_view text)
{
    if (text.empty() || !isOneOf(text[0], "01") || text.size() > 5 || (text.size() > 1 && text[1] != '.')) {
        return std::nullopt;
    }
    unsigned thousandths = text[0] == '1' ? 1000 : 0;
    unsigned weight = 100;
    for (const char each : text.substr(std::min<std::size_t>(2, text.size()))) {
        if (!isOneOf(each, ksDigits)) {
            return std::nullopt;
        }
        thousandths += weight * static_cast<unsigned>(each - '0');
        weight /= 10;
    }
    return thousandths <= 1000 ? std::optional(thousandths) : std::nullopt;
}

/// Adds what one part between commas says.
void readEntry(std::string_view part, bool (*isName)(std::string_view), const char* nameReason, QualityList& list)
{
    const std::string_view name = trimmed(part.substr(0, part.find(';')));
    const auto refuse = [&](const char* reason) { list.m_tMalformed.push_back({std::string(part), reason}); };
    if (!isName(name)) {
        refuse(nameReason);
        return;
    }
    unsigned thousandths = 1000;
    if (const std::size_t semicolon = part.find(';'); semicolon != std::string_view::npos) {
        const std::string_view parameter = trimmed(part.substr(semicolon + 1));
        if (!parameter.starts_with("q=") && !parameter.starts_with("Q=")) {
            refuse("only a q value may follow a semicolon");
            return;
        }
        const auto quality = readQuality(parameter.substr(2));
        if (!quality) {
            refuse("q is no number from 0 to 1 with at most three digits behind the point");
            return;
        }
        thousandths = *quality;
    }
    if (list.m_tEntries.size() == kQualityEntries) {
        refuse("there are too many entries before it");
        return;
    }
    list.m_tEntries.push_back({std::string(name), thousandths});
}

QualityList parse(std::string_view header, bool (*isName)(std::string_view), const char* nameReason)
{
    QualityList list;
    while (!header.empty()) {
        const std::string_view part = header.substr(0, header.find(','));
        header.remove_prefix(part.size() == header.size() ? part.size() : part.size() + 1);
        // HTTP lets lists have empty parts.
        if (const std::string_view entry = trimmed(part); !entry.empty()) {
            readEntry(entry, isName, nameReason, list);
        }
    }
    std::stable_sort(list.m_tEntries.begin(), list.m_tEntries.end(),
                     [](const QualityEntry& a, const QualityEntry& b) { return a.m_nThousandths > b.m_nThousandths; });
    return list;
}

}  // namespace

QualityList parseAcceptLanguage(std::string_view header)
{
    return parse(header, &isLanguageRange, "it is no language tag");
}

QualityList parseAcceptCharset(std::string_view header)
{
    return parse(header, &isToken, "it is no name of a character set");
}

}  // namespace server
