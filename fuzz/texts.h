#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

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

/// A copy in a block of exactly the text's size: a sanitizer sees a read past its end.
class ExactText
{
public:
    explicit ExactText(std::wstring_view text) : m_pText(new wchar_t[text.size()]), m_nLength(text.size())
    {
        std::copy(text.begin(), text.end(), m_pText.get());
    }
    std::wstring_view view() const noexcept { return {m_pText.get(), m_nLength}; }

private:
    std::unique_ptr<wchar_t[]> m_pText;
    std::size_t m_nLength;
};

}  // namespace fuzzing
