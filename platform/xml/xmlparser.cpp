#include "xmlparser.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "xmlpages.h"

namespace vel::xml_details {

namespace {

/// In front of every block: to resize or release one, its size must be known.
struct alignas(std::max_align_t) BlockHead
{
    std::size_t m_nSize;
};

BlockHead* headOf(void* memory) noexcept
{
    return static_cast<BlockHead*>(memory) - 1;
}

void* allocate(std::size_t size)
{
    if (size > std::numeric_limits<std::size_t>::max() - sizeof(BlockHead)) {
        return nullptr;
    }
    void* const block = allocatePiece(sizeof(BlockHead) + size);
    return block == nullptr ? nullptr : new (block) BlockHead{size} + 1;
}

void release(void* memory)
{
    if (memory != nullptr) {
        releasePiece(headOf(memory), sizeof(BlockHead) + headOf(memory)->m_nSize);
    }
}

void* resize(void* memory, std::size_t size)
{
    void* const moved = allocate(size);
    if (moved != nullptr && memory != nullptr) {
        std::memcpy(moved, memory, std::min(size, headOf(memory)->m_nSize));
        release(memory);
    }
    return moved;
}

}  // namespace

XmlParserPointer createParser()
{
    const XML_Memory_Handling_Suite memory{allocate, resize, release};
    XmlParserPointer parser(XML_ParserCreate_MM("UTF-8", &memory, nullptr));
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    return parser;
}

}  // namespace vel::xml_details
