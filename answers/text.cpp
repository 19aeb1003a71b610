#include "answers/text.h"

#include <cstdio>

#include "vel/core/string.h"

namespace answers {

namespace {

bool isControl(wchar_t character) noexcept
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 || character == 0x2029;
}

bool isUnseen(wchar_t character) noexcept
{
    const bool isFormat = character == 0xAD || character == 0x61C || (character >= 0x200B && character <= 0x200F) ||
                          (character >= 0x202A && character <= 0x202E) ||
                          (character >= 0x2060 && character <= 0x206F) || character == 0xFEFF;
    return isFormat || (character > 0xA0 - 1 && vel::isWhiteSpace(character));
}

std::string hexadecimal(wchar_t character, const char* pattern)
{
    char text[24];
    std::snprintf(text, sizeof text, pattern, static_cast<unsigned>(character));
    return text;
}

std::string escaped(wchar_t character)
{
    switch (character) {
    case L'\n':
        return "\\n";
    case L'\r':
        return "\\r";
    case L'\t':
        return "\\t";
    default:
        return hexadecimal(character, "\\u{%X}");
    }
}

}  // namespace

std::string utf8Text(std::wstring_view text)
{
    return vel::toUtf8Lossy(text);
}

std::string visibleText(std::wstring_view text)
{
    std::string visible;
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && !isControl(text[plain])) {
            ++plain;
        }
        visible += utf8Text(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            visible += escaped(text.front());
            text.remove_prefix(1);
        }
    }
    return visible;
}

std::string quotedText(std::wstring_view text)
{
    std::string names;
    for (const wchar_t character : text) {
        if (isUnseen(character)) {
            names += (names.empty() ? "" : " ") + hexadecimal(character, "U+%04X");
        }
    }
    const std::string quoted = "\"" + visibleText(text) + "\"";
    return names.empty() ? quoted : quoted + " (" + names + ")";
}

std::string hexadecimalText(std::string_view bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char each : bytes) {
        text += kDigits[static_cast<unsigned char>(each) >> 4];
        text += kDigits[static_cast<unsigned char>(each) & 15];
    }
    return text;
}

}  // namespace answers
