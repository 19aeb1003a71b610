#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace testsupport {

/// A copy in a block of exactly the text's size, so that a sanitizer sees a read past its end.
class ExactText
{
public:
    explicit ExactText(std::wstring_view text) : m_pText(new wchar_t[text.size()]), m_nLength(text.size())
    {
        std::copy(text.begin(), text.end(), m_pText.get());
    }
    std::wstring_view view() const noexcept { return {m_pText.get(), m_nLength}; }
    const wchar_t* begin() const noexcept { return m_pText.get(); }
    const wchar_t* end() const noexcept { return m_pText.get() + m_nLength; }

private:
    std::unique_ptr<wchar_t[]> m_pText;
    std::size_t m_nLength;
};

}  // namespace testsupport
