#include "icuconverter.h"

#include <algorithm>
#include <new>

#include "codec.h"

namespace vel::transcoding_details {

namespace {

bool canEncode(const char* name, std::string_view latin, UChar last)
{
    const ConverterPtr converter = reopenConverter(name);
    UChar units[32];
    UChar* end = std::copy(latin.begin(), latin.end(), units);
    *end++ = last;
    const UChar* source = units;
    char bytes[256];
    char* out = bytes;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_fromUnicode(converter.get(), &out, bytes + sizeof bytes, &source, end, nullptr, true, &error);
    checkMemory(error);
    return U_SUCCESS(error);
}

}  // namespace

ConverterTraits traitsOf(const char* name)
{
    return {canEncode(name, kReferenceCharacters, '&'), canEncode(name, {}, 0xFFFD)};
}

void checkMemory(UErrorCode error)
{
    if (error == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc();
    }
}

ConverterPtr openConverter(const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    ConverterPtr converter(ucnv_open(name, &error));
    checkMemory(error);
    if (U_FAILURE(error)) {
        return nullptr;
    }
    ucnv_setFallback(converter.get(), false);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    return U_SUCCESS(error) ? std::move(converter) : nullptr;
}

ConverterPtr reopenConverter(const char* name)
{
    ConverterPtr converter = openConverter(name);
    if (converter == nullptr) {
        throw std::bad_alloc();
    }
    return converter;
}

}  // namespace vel::transcoding_details
