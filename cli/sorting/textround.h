#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sorting/inputfiles.h"

namespace cli {

/// What text needs to be sorted, in bytes: its own included for each byte, and beside that for each line.
struct TextCost
{
    double m_nPerByte;
    std::size_t m_nPerLine;

    double of(std::size_t bytes, std::size_t lines) const noexcept
    {
        return static_cast<double>(bytes) * m_nPerByte + static_cast<double>(lines * m_nPerLine);
    }
};

/// Reads lines of files in rounds: as many whole lines as may be sorted within a limit, at least one, in one block of
/// memory.
class TextRound
{
public:
    /// `limit` in bytes.
    TextRound(InputFiles& files, std::size_t limit, char separator);

    /// Reads the next round; false when there is no more. Every line of it ends with the separator, which the last line
    /// of a file may lack there. Throws DataError when reading fails, and UsageError for a line of more than
    /// kMostLineBytes.
    bool next(const TextCost& cost);
    /// Ends the round at an offset behind a separator; what follows begins the next round.
    void cut(std::size_t offset) noexcept { m_nText = offset; }
    /// Bytes in memory: the round's lines and what begins the next round.
    std::size_t heldBytes() const noexcept { return m_nHeld; }
    /// Whether this round is known to be the last.
    bool isLast() const noexcept { return m_bEnd && m_nText == m_nHeld; }
    /// The round's lines. Valid until the next one.
    std::string_view text() const noexcept { return {m_pBlock.get(), m_nText}; }
    /// "FILE, line N" of the line that holds that offset of the round.
    std::string placeOf(std::size_t offset) const;

private:
    /// Where a file's text begins in the round, and the number of its lines before that.
    struct Start
    {
        std::size_t m_nOffset;
        std::string m_sName;
        std::size_t m_nLinesBefore;
    };

    struct Free
    {
        void operator()(char* block) const noexcept { std::free(block); }
    };

    void keepRest();
    bool isFull(const TextCost& cost) const noexcept;
    std::size_t endOfWholeLines(const TextCost& cost) const;
    bool fill();
    void countLines(std::string_view bytes);
    void endFile();
    void makeRoom();
    void resizeBlock(std::size_t capacity);

    InputFiles& m_tFiles;
    std::size_t m_nLimit;
    char m_cSeparator;
    std::unique_ptr<char[], Free> m_pBlock;
    std::size_t m_nCapacity = 0;
    std::size_t m_nHeld = 0;     // bytes in the block
    std::size_t m_nLines = 0;    // separators among them
    std::size_t m_nText = 0;     // bytes of the round's lines
    std::size_t m_nUnended = 0;  // bytes read of the line that is not whole yet
    std::vector<Start> m_tStarts;
    bool m_bOpen = false;
    bool m_bEnd = false;
};

}  // namespace cli
