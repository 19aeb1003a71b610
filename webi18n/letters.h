#pragma once

#include <locale.h>

#include <cstdint>

namespace vel::i18n_details {

/// Which characters are letters, as one of the C library's character types has it. Any thread.
class Letters
{
public:
    /// Opens the character type of that name. Where the system has none, every character beyond ASCII counts as a
    /// letter: who asks looks for words that begin with one, and finds those of every script so too.
    explicit Letters(const char* name) noexcept;
    ~Letters();
    Letters(const Letters&) = delete;
    Letters& operator=(const Letters&) = delete;

    /// Of a character beyond ASCII.
    bool has(wchar_t character) const noexcept;

private:
    locale_t m_tCharacterType;  // null where the system has none
};

/// Letters of the character type "C.UTF-8", which knows every script. The library opens it when it is loaded: what a
/// host sets as its locale, or does not set, makes no difference.
extern const Letters kEveryScript;

/// Whether the character is a letter of any script.
///
///     a, Z, U+00E4, U+0645, U+C624 -> true        5, "." and U+0300 -> false
inline bool isLetter(wchar_t character) noexcept
{
    const std::uint32_t value = static_cast<std::uint32_t>(character);
    if (value < L'A') {
        return false;
    }
    return value < 0x80 ? (value | 0x20) - L'a' < 26 : kEveryScript.has(character);
}

}  // namespace vel::i18n_details
