#pragma once

#include <string>

#include "codec.h"
#include "icuconverter.h"

namespace vel::transcoding_details {

class SetMapping;

/// The codec of a set, or null when the set has no own loop and goes through ICU's converter. `icuName`: the
/// converter's own name, not an alias. Throws std::bad_alloc.
Handle<const Codec> buildCodec(const std::string& icuName, UConverter& converter);

Handle<const Codec> makeUtf8Codec();
/// In big-endian, in little-endian order, and little-endian behind a byte-order mark.
Handle<const Codec> makeUtf16BigEndianCodec();
Handle<const Codec> makeUtf16LittleEndianCodec();
Handle<const Codec> makeUtf16MarkedCodec();

// Built from what ICU's converter says; null for a set that the tables cannot hold. Throw std::bad_alloc.
Handle<const Codec> buildSingleByteCodec(const SetMapping& mapping);
/// One and two bytes a character, and three behind 0x8F.
Handle<const Codec> buildDoubleByteCodec(const SetMapping& mapping);
Handle<const Codec> buildGb18030Codec(const SetMapping& mapping);

}  // namespace vel::transcoding_details
