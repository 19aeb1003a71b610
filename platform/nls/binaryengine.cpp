#include "binaryengine.h"

#include <algorithm>
#include <cstring>

#include "sorttext.h"
#include "utf8bytes.h"

namespace vel::nls {

namespace {

/// Reads UTF-16BE by code points.
class BigEndianReader
{
public:
    BigEndianReader(const unsigned char* bytes, std::size_t count) : m_pNext(bytes), m_pEnd(bytes + count) {}

    bool atEnd() const noexcept { return m_pNext == m_pEnd; }
    char32_t next() noexcept
    {
        if (m_pEnd - m_pNext == 1) {
            m_pNext = m_pEnd;
            return kReplacement;
        }
        const char32_t unit = bigEndianUnit(m_pNext);
        m_pNext += 2;
        if (!isSurrogate(unit)) {
            return unit;
        }
        if (isLeadSurrogate(unit) && m_pEnd - m_pNext >= 2 && isTrailSurrogate(bigEndianUnit(m_pNext))) {
            m_pNext += 2;
            return joinSurrogates(unit, bigEndianUnit(m_pNext - 2));
        }
        return kReplacement;
    }

private:
    const unsigned char* m_pNext;
    const unsigned char* m_pEnd;
};

unsigned char* putBinary(char32_t c, unsigned char* out) noexcept
{
    if (c < 2) {
        *out++ = 1;
        ++c;
    }
    return putUtf8(c, out);
}

/// Reads wide text by code points, as SortTable::compare takes it.
char32_t nextWide(const wchar_t* text, std::size_t& i) noexcept
{
    const auto c = static_cast<char32_t>(text[i++]);
    return isSurrogate(c) || c > 0x10FFFF ? kReplacement : c;
}

}  // namespace

std::size_t BinaryEngine::makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength, unsigned char* out,
                                  std::size_t capacity) const
{
    BigEndianReader reader(utf16be, byteCount);
    std::size_t size = 0;
    while (!reader.atEnd()) {
        unsigned char bytes[5];
        const auto count = static_cast<std::size_t>(putBinary(reader.next(), bytes) - bytes);
        if (size + count <= capacity) {
            std::memcpy(out + size, bytes, count);
        }
        size += count;
    }
    return size;
}

int BinaryEngine::compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb, SortStrength) const
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < na && j < nb) {
        const char32_t left = nextWide(a, i);
        const char32_t right = nextWide(b, j);
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return (i < na ? 1 : 0) - (j < nb ? 1 : 0);
}

std::string BinaryEngine::version() const
{
    return "binary/1";
}

}  // namespace vel::nls
