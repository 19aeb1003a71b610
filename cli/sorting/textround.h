#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sorting/inputfiles.h"

namespace cli {

/// Reads lines of files in rounds: as many whole lines as a limit takes, at least one, in one block of memory.
class TextRound
{
public:
    TextRound(InputFiles& files, std::size_t limit, char separator);

    /// Reads the next round; false when there is no more. Every line of it ends with the separator, which the last line
    /// of a file may lack there.
    bool next();
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

    void keepRest();
    bool fill();
    void endFile();
    void makeRoom();

    InputFiles& m_tFiles;
    std::size_t m_nLimit;
    char m_cSeparator;
    std::unique_ptr<char[]> m_pBlock;
    std::size_t m_nCapacity = 0;
    std::size_t m_nHeld = 0;  // bytes in the block
    std::size_t m_nText = 0;  // those of whole lines
    std::vector<Start> m_tStarts;
    bool m_bOpen = false;
    bool m_bEnd = false;
};

}  // namespace cli
