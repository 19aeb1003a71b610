#include "sortengine.h"

#include <algorithm>
#include <cstring>

#include "threadscratch.h"
#include "vel/transcoding/utf16.h"

namespace vel::nls {

namespace {

/// The key of wide text, in scratch memory.
class ScratchKey
{
public:
    ScratchKey(const SortEngine& engine, const wchar_t* text, std::size_t length, SortStrength strength)
        : m_tKey(5 * length + 64)
    {
        const ThreadScratch bytes(4 * length + 1);
        const std::size_t count = encodeUtf16BigEndian(text, length, reinterpret_cast<char*>(bytes.data()));
        m_nSize = engine.makeKey(bytes.data(), count, strength, m_tKey.data(), m_tKey.size());
        if (m_nSize > m_tKey.size()) {
            ThreadScratch larger(m_nSize);
            m_tKey.swap(larger);
            m_nSize = engine.makeKey(bytes.data(), count, strength, m_tKey.data(), m_tKey.size());
        }
    }

    const unsigned char* data() const noexcept { return m_tKey.data(); }
    std::size_t size() const noexcept { return m_nSize; }

private:
    ThreadScratch m_tKey;
    std::size_t m_nSize = 0;
};

}  // namespace

int compareBytes(const unsigned char* a, std::size_t na, const unsigned char* b, std::size_t nb) noexcept
{
    const std::size_t shared = std::min(na, nb);
    const int difference = shared == 0 ? 0 : std::memcmp(a, b, shared);
    if (difference != 0) {
        return difference < 0 ? -1 : 1;
    }
    return (na > nb ? 1 : 0) - (na < nb ? 1 : 0);
}

int SortEngine::compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb, SortStrength strength) const
{
    const ScratchKey left(*this, a, na, strength);
    const ScratchKey right(*this, b, nb, strength);
    return compareBytes(left.data(), left.size(), right.data(), right.size());
}

}  // namespace vel::nls
