#include "identicallevel.h"

#include <unicode/unorm2.h>

#include "icuhandles.h"
#include "sorttext.h"
#include "utf8bytes.h"

namespace vel::nls {

namespace {

unsigned char* putIdentical(char32_t c, unsigned char* out) noexcept
{
    if (c < 2 || c == 0xFFFE) {
        *out++ = 1;
        c = c == 0xFFFE ? 1 : c + 2;
    }
    return putUtf8(c, out);
}

void appendUnits(const char16_t* text, std::size_t length, KeyBytes& out)
{
    out.reserve(3 * length);
    unsigned char* end = out.end();
    for (std::size_t i = 0; i < length; ++i) {
        char32_t c = text[i];
        if (isLeadSurrogate(c)) {
            c = joinSurrogates(c, text[++i]);
        }
        end = putIdentical(c, end);
    }
    out.setEnd(end);
}

}  // namespace

void appendIdenticalLevel(const unsigned char* utf16be, std::size_t byteCount, KeyBytes& out)
{
    const ThreadScratch text(byteCount + 2);
    const std::size_t length = decodeBigEndian(utf16be, byteCount, text.as<char16_t>());
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&status);
    ThreadScratch decomposed(8 * length + 8);
    const auto decompose = [&] {
        status = U_ZERO_ERROR;
        return static_cast<std::size_t>(unorm2_normalize(nfd, text.as<char16_t>(), static_cast<int32_t>(length),
                                                         decomposed.as<char16_t>(),
                                                         static_cast<int32_t>(decomposed.size() / 2), &status));
    };
    std::size_t size = decompose();
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        ThreadScratch larger(2 * size + 2);
        decomposed.swap(larger);
        size = decompose();
    }
    throwOnFailure(status);
    appendUnits(decomposed.as<char16_t>(), size, out);
}

}  // namespace vel::nls
