#include "codecs.h"

#include "setmapping.h"

namespace vel::transcoding_details {

// A type alone says too little: names with options have it too, and encode differently.
Handle<const Codec> buildCodec(const std::string& icuName, UConverter& converter)
{
    const SetMapping mapping(converter);
    switch (ucnv_getType(&converter)) {
    case UCNV_UTF8:
        return icuName == "UTF-8" ? makeUtf8Codec() : Handle<const Codec>();
    case UCNV_UTF16_BigEndian:
        return icuName == "UTF-16BE" ? makeUtf16BigEndianCodec() : Handle<const Codec>();
    case UCNV_UTF16_LittleEndian:
        return icuName == "UTF-16LE" ? makeUtf16LittleEndianCodec() : Handle<const Codec>();
    case UCNV_UTF16:
        return icuName == "UTF-16" ? makeUtf16MarkedCodec() : Handle<const Codec>();
    case UCNV_SBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
        return buildSingleByteCodec(mapping);
    case UCNV_MBCS:
        // "gb18030-2022" too: a newer edition of the standard moves some characters, as newer tables of ICU have it.
        return icuName.starts_with("gb18030") ? buildGb18030Codec(mapping) : buildDoubleByteCodec(mapping);
    default:
        return {};
    }
}

}  // namespace vel::transcoding_details
