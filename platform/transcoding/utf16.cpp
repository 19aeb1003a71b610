#include "vel/transcoding/utf16.h"

#include <string_view>

#include "avx2.h"
#include "utf16units.h"

namespace vel {

using namespace transcoding_details;

std::size_t encodeUtf16BigEndian(const wchar_t* pText, std::size_t nLength, char* pOut) noexcept
{
    const wchar_t* textEnd = pText + nLength;
    char* out = pOut;
    const bool isVectorised = hasAvx2();
    for (;;) {
        if (isVectorised) {
            encodeUtf16BigEndianBlocksAvx2(pText, textEnd, out);
        }
        while (textEnd - pText >= kUtf16Block && writeUtf16Block<kBigEndian>(pText, out)) {
            pText += kUtf16Block;
            out += 2 * kUtf16Block;
        }
        const wchar_t* singlesEnd = textEnd - pText < kUtf16Block ? textEnd : pText + kUtf16Block;
        for (; pText < singlesEnd; ++pText) {
            const std::uint32_t code = codeOf(*pText);
            out = writeUtf16Character<kBigEndian>(isScalarValue(code) ? code : 0xFFFD, out);
        }
        if (pText == textEnd) {
            return static_cast<std::size_t>(out - pOut);
        }
    }
}

std::size_t decodeUtf16BigEndian(const char* pBytes, std::size_t nSize, wchar_t* pOut,
                                 std::size_t* pErrorOffset) noexcept
{
    // Text never has more characters than units.
    const DecodeRun run = readUtf16<kBigEndian>(pBytes, pBytes + nSize, pOut, pOut + nSize / 2);
    *pErrorOffset = run.m_pIn == pBytes + nSize ? std::string_view::npos : static_cast<std::size_t>(run.m_pIn - pBytes);
    return static_cast<std::size_t>(run.m_pOut - pOut);
}

}  // namespace vel
