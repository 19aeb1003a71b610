#include "sorting/textround.h"

#include <algorithm>
#include <new>

#include "lines.h"

namespace cli {

namespace {

constexpr std::size_t kReadBytes = std::size_t{64} << 10;
/// Lines are counted with 32 bits.
constexpr std::size_t kMostRoundBytes = 0xFFFF0000;

std::size_t countOf(std::string_view text, char byte)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), byte));
}

}  // namespace

TextRound::TextRound(InputFiles& files, std::size_t limit, char separator)
    : m_tFiles(files), m_nLimit(limit), m_cSeparator(separator)
{}

bool TextRound::next(const TextCost& cost)
{
    keepRest();
    // A line that is longer than the limit is read to its end.
    while (!isFull(cost) || m_nLines == 0) {
        if (!fill()) {
            break;
        }
    }
    m_nText = isFull(cost) ? endOfWholeLines(cost) : m_nHeld;
    return m_nText != 0;
}

bool TextRound::isFull(const TextCost& cost) const noexcept
{
    return cost.of(m_nHeld, m_nLines) >= static_cast<double>(m_nLimit) || m_nHeld >= kMostRoundBytes;
}

/// About as many lines as the limit takes, where more are held than that; at least one.
std::size_t TextRound::endOfWholeLines(const TextCost& cost) const
{
    const double share = static_cast<double>(m_nLimit) / cost.of(m_nHeld, m_nLines);
    const auto most = std::min(static_cast<std::size_t>(static_cast<double>(m_nHeld) * std::min(share, 1.0)), m_nHeld);
    const std::string_view held(m_pBlock.get(), m_nHeld);
    const std::size_t last = held.substr(0, most).rfind(m_cSeparator);
    return (last != std::string_view::npos ? last : held.find(m_cSeparator, most)) + 1;
}

/// What follows the round's lines begins the next round. The room of the others goes back: the next may need it for
/// keys.
void TextRound::keepRest()
{
    const auto next = std::find_if(m_tStarts.begin(), m_tStarts.end(),
                                   [this](const Start& each) { return each.m_nOffset >= m_nText; });
    if (next != m_tStarts.begin()) {
        // The file whose lines the round ended with goes on.
        Start& current = *(next - 1);
        current.m_nLinesBefore += countOf(text().substr(current.m_nOffset), m_cSeparator);
        current.m_nOffset = m_nText;
        m_tStarts.erase(m_tStarts.begin(), next - 1);
    }
    for (Start& each : m_tStarts) {
        each.m_nOffset -= m_nText;
    }
    std::copy(m_pBlock.get() + m_nText, m_pBlock.get() + m_nHeld, m_pBlock.get());
    m_nHeld -= m_nText;
    m_nText = 0;
    resizeBlock(m_nHeld + 2 * kReadBytes);
    m_nLines = countOf({m_pBlock.get(), m_nHeld}, m_cSeparator);
}

/// For one more read, and a separator behind it.
void TextRound::makeRoom()
{
    if (m_nCapacity - m_nHeld <= kReadBytes) {
        resizeBlock(std::max(m_nHeld + 2 * kReadBytes, m_nCapacity + m_nCapacity / 2));
    }
}

/// The system moves a large block's pages: none is there twice.
void TextRound::resizeBlock(std::size_t capacity)
{
    char* const block = static_cast<char*>(std::realloc(m_pBlock.get(), capacity));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(m_pBlock.release());
    m_pBlock.reset(block);
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
        const std::size_t count = m_tFiles.read(m_pBlock.get() + m_nHeld, kReadBytes);
        countLines({m_pBlock.get() + m_nHeld, count});
        m_nHeld += count;
        if (count != 0) {
            return true;
        }
        endFile();
    }
    return false;
}

/// Of what was read last.
void TextRound::countLines(std::string_view bytes)
{
    const std::size_t first = std::min(bytes.find(m_cSeparator), bytes.size());
    if (m_nUnended + first > kMostLineBytes) {
        const Start& file = m_tStarts.back();
        const std::string_view before(m_pBlock.get() + file.m_nOffset, m_nHeld - file.m_nOffset);
        throwLineTooLong(file.m_sName, file.m_nLinesBefore + countOf(before, m_cSeparator) + 1);
    }
    m_nUnended = first == bytes.size() ? m_nUnended + first : bytes.size() - bytes.rfind(m_cSeparator) - 1;
    m_nLines += countOf(bytes, m_cSeparator);
}

void TextRound::endFile()
{
    m_bOpen = false;
    m_nUnended = 0;
    const std::size_t start = m_tStarts.back().m_nOffset;
    if (m_nHeld > start && m_pBlock.get()[m_nHeld - 1] != m_cSeparator) {
        m_pBlock.get()[m_nHeld++] = m_cSeparator;
        ++m_nLines;
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
