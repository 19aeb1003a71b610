#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace fuzzing {

/// The first lines, empty ones where there are not so many.
template <std::size_t count>
std::array<std::wstring, count> linesOf(const std::wstring& text)
{
    std::array<std::wstring, count> lines;
    std::size_t begin = 0;
    for (std::wstring& line : lines) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        line = text.substr(begin, end - begin);
        begin = std::min(end + 1, text.size());
    }
    return lines;
}

}  // namespace fuzzing
