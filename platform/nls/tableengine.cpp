#include "tableengine.h"

#include "keywriter.h"

namespace vel::nls {

std::size_t TableEngine::makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength,
                                 unsigned char* out, std::size_t capacity) const
{
    KeyWriter writer(*m_pData, strength, out, capacity);
    return writer.write(utf16be, byteCount);
}

}  // namespace vel::nls
