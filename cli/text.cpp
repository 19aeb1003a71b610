#include "text.h"

#include <cstdio>
#include <cstring>

#include "failures.h"
#include "vel/core/utf8.h"

namespace cli {

namespace {

/// The control character that UTF-8 text begins with, and its length; 0 when there is none.
struct Control
{
    unsigned m_nCharacter;
    std::size_t m_nLength;
};

Control controlAtBegin(const char* text) noexcept
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    if (bytes[0] < 0x20 || bytes[0] == 0x7F) {
        return {bytes[0], 1};
    }
    if (bytes[0] == 0xC2 && bytes[1] >= 0x80 && bytes[1] < 0xA0) {
        return {bytes[1], 2};
    }
    if (std::strncmp(text, "\xE2\x80\xA8", 3) == 0 || std::strncmp(text, "\xE2\x80\xA9", 3) == 0) {
        return {0x2000U + (bytes[2] & 0x3F), 3};
    }
    return {0, 0};
}

}  // namespace

void complainWithoutKind(const char* text) noexcept
{
    while (*text != '\0') {
        const char* end = text;
        while (*end != '\0' && controlAtBegin(end).m_nLength == 0) {
            ++end;
        }
        std::fwrite(text, 1, static_cast<std::size_t>(end - text), stderr);
        text = end;
        if (*text != '\0') {
            const Control control = controlAtBegin(text);
            text += control.m_nLength;
            control.m_nCharacter == '\n' ? std::fputs("\\n", stderr)
                                         : std::fprintf(stderr, "\\u{%X}", control.m_nCharacter);
        }
    }
    std::fputc('\n', stderr);
}

void complain(const char* kind, const char* text) noexcept
{
    std::fprintf(stderr, "webi18n: %s: ", kind);
    complainWithoutKind(text);
}

void complain(const char* kind, const std::string& text) noexcept
{
    complain(kind, text.c_str());
}

vel::String wideText(std::string_view utf8, const std::string& where)
{
    std::wstring wide;
    if (const auto fault = vel::appendUtf8AsWide(utf8, wide)) {
        throw UsageError(where + ": invalid UTF-8 at byte offset " + std::to_string(*fault));
    }
    return vel::String(std::move(wide));
}

}  // namespace cli
