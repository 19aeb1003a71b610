#include "tableengine.h"

#include "keywriter.h"

namespace vel::nls {

namespace {

std::size_t makeLongKey(const SortData& data, const unsigned char* utf16be, std::size_t byteCount,
                        SortStrength strength, unsigned char* out, std::size_t capacity)
{
    KeyWriter writer(data, strength, out, capacity);
    return writer.write(utf16be, byteCount);
}

}  // namespace

TableEngine::TableEngine(std::unique_ptr<const SortData> data, std::string version)
    : m_pData(std::move(data)), m_sVersion(std::move(version))
{
    for (std::size_t i = 0; i < m_aShortKeys.size(); ++i) {
        m_aShortKeys[i] = shortKeyMaker(*m_pData, static_cast<SortStrength>(i));
    }
}

std::size_t TableEngine::makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength,
                                 unsigned char* out, std::size_t capacity) const
{
    // The short way goes on to the long one by itself: nothing has to be kept for it here.
    const ShortKeyMaker makeShort = m_aShortKeys[static_cast<std::size_t>(strength)];
    return makeShort(*m_pData, utf16be, byteCount, out, capacity, makeLongKey);
}

}  // namespace vel::nls
