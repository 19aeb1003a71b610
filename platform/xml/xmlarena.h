#pragma once

#include <cstddef>
#include <vector>

#include "xmlpages.h"

namespace vel::xml_details {

/// Memory of one document: handed out in order, freed as a whole, no destructors run. Addresses are multiples of 8.
class XmlArena
{
public:
    /// `nExpected`: a guess at the bytes that will be asked for in all; it only shapes the blocks.
    explicit XmlArena(std::size_t nExpected) noexcept;

    /// `nSize` bytes, uninitialised.
    void* allocate(std::size_t nSize)
    {
        nSize = (nSize + 7) & ~std::size_t{7};
        if (nSize > m_nLeft) [[unlikely]] {
            addBlock(nSize);
        }
        std::byte* const result = m_pNext;
        m_pNext += nSize;
        m_nLeft -= nSize;
        return result;
    }

    /// Room for `nCount` characters, of which commitText keeps those that were written.
    wchar_t* reserveText(std::size_t nCount)
    {
        if (nCount * sizeof(wchar_t) + 7 > m_nLeft) [[unlikely]] {
            addBlock(nCount * sizeof(wchar_t) + 7);
        }
        return reinterpret_cast<wchar_t*>(m_pNext);
    }
    /// `nCount`: not more than was reserved last, with nothing allocated since.
    void commitText(std::size_t nCount) noexcept
    {
        const std::size_t nSize = (nCount * sizeof(wchar_t) + 7) & ~std::size_t{7};
        m_pNext += nSize;
        m_nLeft -= nSize;
    }

    std::size_t bytes() const noexcept { return m_nBytes; }

private:
    void addBlock(std::size_t nAtLeast);

    std::vector<XmlPiece<std::byte>> m_tBlocks;
    std::byte* m_pNext = nullptr;
    std::size_t m_nLeft = 0;
    std::size_t m_nBlockSize;
    std::size_t m_nBytes = 0;
};

}  // namespace vel::xml_details
