#pragma once

#include <cstddef>
#include <string_view>

namespace vel {

/// A text that lies elsewhere, such as in a string pool: a pointer and a length, and no ownership. Cheap to copy; valid
/// as long as what it refers to.
template <typename Char>
class RefStringTemplate
{
public:
    using View = std::basic_string_view<Char>;

    /// Empty: null, 0.
    constexpr RefStringTemplate() noexcept = default;
    /// `text` has at least `length` characters.
    constexpr RefStringTemplate(const Char* text, std::size_t length) noexcept : m_pText(text), m_nLength(length) {}

    constexpr const Char* data() const noexcept { return m_pText; }
    constexpr std::size_t length() const noexcept { return m_nLength; }
    constexpr bool isEmpty() const noexcept { return m_nLength == 0; }
    constexpr View view() const noexcept { return View(m_pText, m_nLength); }
    constexpr operator View() const noexcept { return view(); }

    /// By contents.
    friend constexpr bool operator==(const RefStringTemplate& a, const RefStringTemplate& b) noexcept
    {
        return a.view() == b.view();
    }

private:
    const Char* m_pText = nullptr;
    std::size_t m_nLength = 0;
};

}  // namespace vel
