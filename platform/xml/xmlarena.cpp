#include "xmlarena.h"

#include <algorithm>

namespace vel::xml_details {

namespace {

constexpr std::size_t kMinBlock = std::size_t{1} << 10;
constexpr std::size_t kMaxBlock = std::size_t{4} << 20;

}  // namespace

XmlArena::XmlArena(std::size_t nExpected) noexcept : m_nBlockSize(std::clamp(nExpected, kMinBlock, kMaxBlock))
{}

void XmlArena::addBlock(std::size_t nAtLeast)
{
    const std::size_t nSize = std::max(nAtLeast, m_nBlockSize);
    XmlPiece<std::byte> block(nSize);
    std::byte* const start = block.get();
    m_tBlocks.push_back(std::move(block));
    m_pNext = start;
    m_nLeft = nSize;
    m_nBytes += nSize;
}

}  // namespace vel::xml_details
