#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "vel/core/nocasecompare.h"
#include "vel/core/utf8.h"

namespace vel {

/// White space as the Unicode property White_Space has it: what trimming removes.
bool constexpr isWhiteSpace(wchar_t character) noexcept
{
    return (character >= 0x09 && character <= 0x0D) || character == 0x20 || character == 0x85 || character == 0xA0 ||
           character == 0x1680 || (character >= 0x2000 && character <= 0x200A) || character == 0x2028 ||
           character == 0x2029 || character == 0x202F || character == 0x205F || character == 0x3000;
}

/// A string value: a standard string with the operations that this system uses. Comparison and equality are
/// case-sensitive, by character value. Copies are independent; one object is used by one thread at a time.
template <typename Char>
class StringTemplate
{
public:
    using View = std::basic_string_view<Char>;
    using Standard = std::basic_string<Char>;
    static constexpr std::size_t kNotFound = View::npos;

    StringTemplate() = default;
    StringTemplate(const Char* text) : m_sText(text == nullptr ? View() : View(text)) {}
    StringTemplate(const Char* text, std::size_t length) : m_sText(text, length) {}
    StringTemplate(View text) : m_sText(text) {}
    StringTemplate(Standard text) noexcept : m_sText(std::move(text)) {}

    bool isEmpty() const noexcept { return m_sText.empty(); }
    std::size_t length() const noexcept { return m_sText.size(); }
    /// Zero-terminated; valid until the next change.
    const Char* c_str() const noexcept { return m_sText.c_str(); }  // NOLINT(readability-identifier-naming)
    const Char* data() const noexcept { return m_sText.data(); }
    /// To write length() characters.
    Char* data() noexcept { return m_sText.data(); }
    View view() const noexcept { return m_sText; }
    operator View() const noexcept { return m_sText; }
    const Standard& standard() const noexcept { return m_sText; }
    /// `index` below length().
    Char operator[](std::size_t index) const noexcept { return m_sText[index]; }
    auto begin() const noexcept { return m_sText.begin(); }
    auto end() const noexcept { return m_sText.end(); }

    StringTemplate& append(View text)
    {
        m_sText.append(text);
        return *this;
    }
    StringTemplate& append(Char character)
    {
        m_sText.push_back(character);
        return *this;
    }
    StringTemplate& operator+=(View text) { return append(text); }
    StringTemplate& operator+=(Char character) { return append(character); }
    void clear() noexcept { m_sText.clear(); }
    /// Cuts, or adds zeros. Throws std::bad_alloc or std::length_error; nothing has changed then.
    void resize(std::size_t nLength) { m_sText.resize(nLength); }
    void swap(StringTemplate& other) noexcept { m_sText.swap(other.m_sText); }

    /// Index of the first occurrence at or after `from`, or kNotFound. An empty text is found at `from`.
    std::size_t find(View text, std::size_t from = 0) const noexcept { return view().find(text, from); }
    std::size_t find(Char character, std::size_t from = 0) const noexcept { return view().find(character, from); }
    bool startsWith(View text) const noexcept { return view().starts_with(text); }
    /// At most `count` characters from `from`; empty when `from` is at or past the end.
    StringTemplate substring(std::size_t from, std::size_t count = kNotFound) const
    {
        return from >= length() ? StringTemplate() : StringTemplate(view().substr(from, count));
    }

    /// Negative, zero or positive, by character value.
    int compare(View other) const noexcept { return view().compare(other); }
    /// The same after Unicode simple case folding. Wide strings only.
    int compareNoCase(View other) const noexcept { return vel::compareNoCase(view(), other); }
    bool equalsNoCase(View other) const noexcept { return compareNoCase(other) == 0; }

    /// Without white space at both ends (isWhiteSpace).
    StringTemplate trimmed() const { return StringTemplate(trim(view())); }
    /// The part of `text` without white space at both ends; empty when there is nothing else.
    static View trim(View text) noexcept
    {
        while (!text.empty() && isWhiteSpace(static_cast<wchar_t>(text.front()))) {
            text.remove_prefix(1);
        }
        while (!text.empty() && isWhiteSpace(static_cast<wchar_t>(text.back()))) {
            text.remove_suffix(1);
        }
        return text;
    }

    friend bool operator==(const StringTemplate& a, const StringTemplate& b) noexcept { return a.m_sText == b.m_sText; }
    friend bool operator==(const StringTemplate& a, View b) noexcept { return a.view() == b; }
    friend bool operator==(const StringTemplate& a, const Char* b) noexcept { return a.view() == View(b); }
    friend std::strong_ordering operator<=>(const StringTemplate& a, const StringTemplate& b) noexcept
    {
        return a.compare(b.view()) <=> 0;
    }
    friend std::strong_ordering operator<=>(const StringTemplate& a, View b) noexcept { return a.compare(b) <=> 0; }
    friend StringTemplate operator+(const StringTemplate& a, View b) { return StringTemplate(a).append(b); }

private:
    Standard m_sText;
};

/// Wide text: one 32-bit code point a character.
using String = StringTemplate<wchar_t>;
/// Bytes; UTF-8 where it is text.
using NarrowString = StringTemplate<char>;

/// The wide form of well-formed UTF-8 text, or nothing; `errorOffset`, when given, receives the byte offset of the
/// fault.
inline std::optional<String> stringFromUtf8(std::string_view utf8, std::size_t* errorOffset = nullptr)
{
    std::wstring wide;
    const std::optional<std::size_t> fault = appendUtf8AsWide(utf8, wide);
    if (fault && errorOffset != nullptr) {
        *errorOffset = *fault;
    }
    return fault ? std::nullopt : std::optional<String>(String(std::move(wide)));
}

/// The decimal digits of a number. The standard library's wide form of them prints through the C library, which nothing
/// here shall do.
inline String decimalString(unsigned long long number)
{
    const std::string digits = std::to_string(number);
    return String(std::wstring(digits.begin(), digits.end()));
}

}  // namespace vel

template <typename Char>
struct std::hash<vel::StringTemplate<Char>>
{
    std::size_t operator()(const vel::StringTemplate<Char>& text) const noexcept
    {
        return std::hash<std::basic_string_view<Char>>()(text.view());
    }
};
