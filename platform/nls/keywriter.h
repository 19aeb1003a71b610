#pragma once

#include <cstddef>

#include "keybytes.h"
#include "keylevels.h"
#include "sortdata.h"

namespace vel::nls {

class LongRuns;

/// Makes one key. Plain characters take the short way, a load and a store each; a character that is read together with
/// others takes them along; what only ICU can read goes through its iterator, up to the next place where the text can
/// be cut. All ways write the same format.
class KeyWriter
{
public:
    KeyWriter(const SortData& data, SortStrength strength, unsigned char* out, std::size_t capacity);

    /// SortTable::makeKey.
    std::size_t write(const unsigned char* utf16be, std::size_t byteCount);

    /// Code units that went through ICU's iterator.
    std::size_t slowUnits() const noexcept { return m_nSlowUnits; }
    /// LongRuns::work of all long runs.
    std::size_t runWork() const noexcept { return m_nRunWork; }

private:
    struct Character
    {
        char32_t m_cCode;
        std::size_t m_nWidth;
        SortEntry m_nEntry;
    };
    /// The state between two chunks.
    struct Checkpoint
    {
        std::size_t m_nPrimary;
        KeyLevels::Checkpoint m_tLevels;
        std::size_t m_nElements;
        bool m_bIgnoring;
        std::size_t m_nLastCut;
        std::size_t m_nSlowUnits;
    };
    /// In place of where the text goes on: the chunk has to be read with care.
    static constexpr std::size_t kBail = static_cast<std::size_t>(-1);

    void addText(const unsigned char* text, std::size_t units);
    std::size_t chunkEnd(std::size_t begin) const noexcept;
    std::size_t addChunk(std::size_t begin, std::size_t end);
    template <bool kCareful>
    std::size_t runChunk(std::size_t i, std::size_t end);
    template <unsigned kLevels, bool kQuaternary, bool kCareful>
    std::size_t run(std::size_t i, std::size_t end);
    void makeRoom(std::size_t characters);
    Checkpoint save() const noexcept;
    void restore(const Checkpoint& checkpoint) noexcept;
    void retryFrom(std::size_t i) noexcept;

    char16_t unit(std::size_t i) const noexcept;
    Character characterAt(std::size_t i) const noexcept;
    Character characterBefore(std::size_t i) const noexcept;

    std::size_t special(std::size_t i, bool isCareful);
    std::size_t start(std::size_t i, const Character& c, const Opening& opening, SortEntry alone);
    std::size_t startMarked(std::size_t i, const Character& c, const Opening& opening, SortEntry alone);
    std::size_t prefixed(std::size_t i, const Character& c, const Opening& opening);
    bool mayMarksMove(char32_t before, const Opening& opening, const Character& next, bool isMember,
                      std::size_t place) const noexcept;
    bool areMarksInOrder(char32_t before, std::size_t i) const noexcept;
    bool areMarksAt(std::size_t i) const noexcept;
    bool followsCare(std::size_t i) const noexcept;
    std::size_t skipIgnored(std::size_t i, bool isCareful) noexcept;

    void addEntry(SortEntry e);
    void addPlain(SortEntry e);
    void addHangul(std::uint32_t number);
    void addElement(const CodedElement& element);
    void addSecondary(const CodedElement& element);
    void addTertiary(const CodedElement& element);

    std::size_t slow(std::size_t i);
    std::size_t addBeyond(std::size_t i);
    std::size_t endOfDigits(std::size_t i) const noexcept;
    std::size_t addNumber(std::size_t i);
    std::size_t addByIcu(std::size_t i);
    std::size_t collectLongRun(std::size_t i, std::size_t within, LongRuns& runs) const;
    std::size_t addLongRun(std::size_t i, std::size_t within);
    void addCommon(std::uint32_t primary);
    /// Where the text can be cut, or a place within the first long run of marks before that.
    struct Stretch
    {
        std::size_t m_nEnd;
        bool m_bLongRun;
    };
    Stretch stretchFrom(std::size_t i, std::size_t mostMarks) const noexcept;
    void addSlow(const char16_t* text, std::size_t length, std::size_t skip);

    std::size_t finish(const unsigned char* utf16be, std::size_t byteCount);
    std::size_t put(const KeyBytes& identical);

    const SortData& m_rData;
    SortStrength m_eStrength;
    unsigned char* m_pOut;
    std::size_t m_nCapacity;
    KeyBytes m_tPrimary;
    KeyLevels m_tLevels;
    const unsigned char* m_pText = nullptr;
    std::size_t m_nUnits = 0;
    std::size_t m_nElements = 0;
    /// Whether what has no primary weight is ignored, because it stands behind a shifted character.
    bool m_bIgnoring = false;
    /// Before this place nothing has to be looked at.
    std::size_t m_nLastCut = 0;
    /// From this place on the chunk is read again when it has to be read with care.
    std::size_t m_nRetry = 0;
    Checkpoint m_tRetry{};
    std::size_t m_nSlowUnits = 0;
    std::size_t m_nRunWork = 0;
};

}  // namespace vel::nls
