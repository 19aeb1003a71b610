#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace sortpairs {

/// Makes texts that are hard on a sort: its own letters and sequences, whole and cut in two, marks in every order,
/// prefixes, what is ignored, Hangul, vowels written before their consonant, characters of all planes, assigned or not,
/// and halves of characters. The same seed makes the same texts.
class TextMaker
{
public:
    TextMaker(const std::string& icuLocale, std::uint64_t seed);

    /// A text, and others that differ from it in a few places.
    std::vector<std::u16string> family(std::size_t count);

private:
    std::size_t below(std::size_t limit);
    const std::u16string& oneOf(const std::vector<std::u16string>& pieces);
    std::u16string piece();
    std::size_t length();
    std::vector<std::u16string> pieces();
    void change(std::vector<std::u16string>& pieces);

    std::mt19937_64 m_tRandom;
    std::vector<std::u16string> m_tLetters;    ///< the language's
    std::vector<std::u16string> m_tSequences;  ///< the sort's contractions and prefixes
    std::vector<std::u16string> m_tMarks;
    std::vector<std::vector<std::u16string>> m_tOthers;
};

}  // namespace sortpairs
