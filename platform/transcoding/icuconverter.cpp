#include "icuconverter.h"

#include <new>

namespace vel::transcoding_details {

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
