#include "text.h"

#include <cstdio>

#include "failures.h"
#include "vel/core/utf8.h"

namespace cli {

void complain(const char* kind, const std::string& text) noexcept
{
    std::fprintf(stderr, "webi18n: %s: %s\n", kind, text.c_str());
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
