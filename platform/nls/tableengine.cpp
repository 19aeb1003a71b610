#include "tableengine.h"

#include "keyshort.h"
#include "keywriter.h"
#include "tablecompare.h"

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

int TableEngine::compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb,
                         SortStrength strength) const
{
    if (const std::optional<int> order = compareTexts(*m_pData, a, na, b, nb, strength)) {
        return *order;
    }
    return SortEngine::compare(a, na, b, nb, strength);
}

}  // namespace vel::nls
