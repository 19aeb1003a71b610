#include "query.h"

#include "http.h"
#include "serverlimits.h"

namespace server {

namespace {

int digitOf(char character)
{
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

vel::String wideOf(std::string_view written)
{
    const auto bytes = percentDecoded(written);
    if (!bytes) {
        throw Refusal{400, "bad-encoding", "A percent sign is not followed by two hexadecimal digits."};
    }
    std::size_t offset = 0;
    auto text = vel::stringFromUtf8(*bytes, &offset);
    if (!text) {
        throw Refusal{400, "bad-encoding", "A text is no UTF-8, at its byte offset " + std::to_string(offset) + "."};
    }
    return *std::move(text);
}

}  // namespace

std::optional<std::string> percentDecoded(std::string_view text)
{
    std::string bytes;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '%') {
            bytes += text[index] == '+' ? ' ' : text[index];
            continue;
        }
        const int high = text.size() - index > 2 ? digitOf(text[index + 1]) : -1;
        const int low = high < 0 ? -1 : digitOf(text[index + 2]);
        if (low < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(high * 16 + low);
        index += 2;
    }
    return bytes;
}

std::string percentEncoded(std::string_view bytes)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char each : bytes) {
        const char lower = static_cast<char>(each | 0x20);
        const bool isPlain = (lower >= 'a' && lower <= 'z') || (each >= '0' && each <= '9') || each == '-' ||
                             each == '.' || each == '_' || each == '~';
        const auto byte = static_cast<unsigned char>(each);
        text += isPlain ? std::string(1, each) : std::string{'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

Parameters parametersOf(std::string_view query)
{
    Parameters parameters;
    while (!query.empty()) {
        const std::string_view part = query.substr(0, query.find('&'));
        query.remove_prefix(part.size() == query.size() ? part.size() : part.size() + 1);
        if (part.empty()) {
            continue;
        }
        if (parameters.size() == kParameters) {
            throw Refusal{400, "too-many-parameters", "There are too many parameters."};
        }
        const std::string_view name = part.substr(0, part.find('='));
        const std::string_view value = name.size() == part.size() ? std::string_view() : part.substr(name.size() + 1);
        parameters.emplace_back(vel::toUtf8Lossy(wideOf(name)), wideOf(value));
    }
    return parameters;
}

Target Target::of(std::string_view target)
{
    const std::string_view path = target.substr(0, target.find('?'));
    const bool hasQuery = path.size() != target.size();
    return {std::string(path), hasQuery ? parametersOf(target.substr(path.size() + 1)) : Parameters()};
}

std::optional<vel::String> Target::find(std::string_view name) const
{
    std::optional<vel::String> found;
    for (const auto& [each, value] : m_tParameters) {
        if (each != name) {
            continue;
        }
        if (found) {
            throw Refusal{
                400, "bad-parameter", "The parameter " + std::string(name) + " stands twice.", {}, std::string(name)};
        }
        found = value;
    }
    return found;
}

vel::String Target::text(std::string_view name, std::size_t greatestLength) const
{
    vel::String value = find(name).value_or(vel::String());
    if (value.length() > greatestLength) {
        throw Refusal{
            400,
            "bad-parameter",
            "The parameter " + std::string(name) + " is longer than " + std::to_string(greatestLength) + " characters.",
            {},
            std::string(name)};
    }
    return value;
}

}  // namespace server
