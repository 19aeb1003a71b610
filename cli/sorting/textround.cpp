#include "sorting/textround.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace cli {

namespace {

constexpr std::size_t kLeastRead = std::size_t{64} << 10;

std::size_t countOf(std::string_view text, char byte)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), byte));
}

}  // namespace

TextRound::TextRound(InputFiles& files, std::size_t limit, char separator)
    : m_tFiles(files), m_nLimit(std::max(limit, kLeastRead)), m_cSeparator(separator)
{}

bool TextRound::next()
{
    keepRest();
    std::size_t searched = 0;
    while (fill()) {
        const void* last =
            m_nHeld < m_nLimit ? nullptr : ::memrchr(m_pBlock.get() + searched, m_cSeparator, m_nHeld - searched);
        if (last != nullptr) {
            m_nText = static_cast<std::size_t>(static_cast<const char*>(last) - m_pBlock.get()) + 1;
            return true;
        }
        searched = m_nHeld < m_nLimit ? 0 : m_nHeld;
    }
    m_nText = m_nHeld;
    return m_nText != 0;
}

/// What follows the last whole line begins the next round.
void TextRound::keepRest()
{
    if (!m_tStarts.empty()) {
        Start current = std::move(m_tStarts.back());
        const std::string_view done = text().substr(std::min(current.m_nOffset, m_nText));
        current.m_nLinesBefore += countOf(done, m_cSeparator);
        // The rest is a piece of one line, so it is all of the file that was opened last.
        current.m_nOffset = 0;
        m_tStarts.clear();
        m_tStarts.push_back(std::move(current));
    }
    std::copy(m_pBlock.get() + m_nText, m_pBlock.get() + m_nHeld, m_pBlock.get());
    m_nHeld -= m_nText;
    m_nText = 0;
}

void TextRound::makeRoom()
{
    if (m_nCapacity - m_nHeld >= kLeastRead) {
        return;
    }
    // No more than the limit, unless one line is longer than that.
    const std::size_t most = m_nHeld < m_nLimit ? m_nLimit : std::numeric_limits<std::size_t>::max();
    const std::size_t capacity = std::max(m_nHeld + kLeastRead, std::min(m_nCapacity * 2, most));
    std::unique_ptr<char[]> block(new char[capacity]);
    std::copy(m_pBlock.get(), m_pBlock.get() + m_nHeld, block.get());
    m_pBlock = std::move(block);
    m_nCapacity = capacity;
}

/// Reads once; false at the end of the last file.
bool TextRound::fill()
{
    while (!m_bEnd) {
        if (!m_bOpen) {
            if (!m_tFiles.openNext()) {
                m_bEnd = true;
                return false;
            }
            m_bOpen = true;
            m_tStarts.push_back({m_nHeld, m_tFiles.name(), 0});
        }
        makeRoom();
        const std::size_t count = m_tFiles.read(m_pBlock.get() + m_nHeld, m_nCapacity - m_nHeld);
        m_nHeld += count;
        if (count != 0) {
            return true;
        }
        endFile();
    }
    return false;
}

void TextRound::endFile()
{
    m_bOpen = false;
    const std::size_t start = m_tStarts.back().m_nOffset;
    if (m_nHeld > start && m_pBlock[m_nHeld - 1] != m_cSeparator) {
        makeRoom();
        m_pBlock[m_nHeld++] = m_cSeparator;
    }
}

std::string TextRound::placeOf(std::size_t offset) const
{
    const auto after = std::partition_point(m_tStarts.begin(), m_tStarts.end(),
                                            [=](const Start& each) { return each.m_nOffset <= offset; });
    const Start& start = *(after - 1);
    const std::size_t lines =
        start.m_nLinesBefore + countOf(text().substr(start.m_nOffset, offset - start.m_nOffset), m_cSeparator);
    return start.m_sName + ", line " + std::to_string(lines + 1);
}

}  // namespace cli
