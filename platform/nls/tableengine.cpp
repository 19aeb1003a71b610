#include "tableengine.h"

#include "keyshort.h"
#include "keywriter.h"

namespace vel::nls {

std::size_t TableEngine::makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength,
                                 unsigned char* out, std::size_t capacity) const
{
    if (byteCount % 2 == 0) {
        if (const auto size = makeShortKey(*m_pData, utf16be, byteCount / 2, strength, out, capacity)) {
            return *size;
        }
    }
    KeyWriter writer(*m_pData, strength, out, capacity);
    return writer.write(utf16be, byteCount);
}

}  // namespace vel::nls
