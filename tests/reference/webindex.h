#pragma once

#include <fstream>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// What the encodings of the web are made of: bytes, and the indexes of the standard.

namespace reference {

/// The bytes of a character; nothing when an encoding lacks it.
using Bytes = std::optional<std::string>;

/// A file of webencodings/; throws std::runtime_error when it is missing.
std::ifstream openWebFile(const std::string& file);

/// The byte at a place, 0x100 behind the end.
inline unsigned at(const std::string& bytes, std::size_t place)
{
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0x100;
}

inline bool isIn(unsigned byte, unsigned first, unsigned last)
{
    return byte >= first && byte <= last;
}

inline std::string bytesOf(std::initializer_list<unsigned> values)
{
    std::string bytes;
    for (const unsigned each : values) {
        bytes.push_back(static_cast<char>(each));
    }
    return bytes;
}

inline bool isScalar(char32_t character)
{
    return character < 0xD800 || (character > 0xDFFF && character < 0x110000);
}

/// Characters by pointer; a pointer by character is the first, but where an encoding leaves a part out.
class WebIndex
{
public:
    explicit WebIndex(const std::string& name);
    std::optional<char32_t> character(unsigned pointer) const
    {
        const auto found = m_tCharacters.find(pointer);
        return found == m_tCharacters.end() ? std::nullopt : std::optional(found->second);
    }
    /// Every pointer of the character, in rising order.
    const std::vector<unsigned>& pointers(char32_t character) const
    {
        static const std::vector<unsigned> kNone;
        const auto found = m_tPointers.find(character);
        return found == m_tPointers.end() ? kNone : found->second;
    }
    std::optional<unsigned> firstPointer(char32_t character) const
    {
        return pointers(character).empty() ? std::nullopt : std::optional(pointers(character).front());
    }

private:
    std::map<unsigned, char32_t> m_tCharacters;
    std::unordered_map<char32_t, std::vector<unsigned>> m_tPointers;
};

/// Appends the character if there is one, and tells whether there was.
inline bool append(const std::optional<char32_t>& character, std::u32string& out)
{
    if (character) {
        out.push_back(*character);
    }
    return character.has_value();
}

}  // namespace reference
