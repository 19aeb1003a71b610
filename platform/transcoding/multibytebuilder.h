#pragma once

#include <utility>

#include "codec.h"
#include "multibyteloop.h"
#include "setmapping.h"

namespace vel::transcoding_details {

/// A codec from the mapping of a set whose characters are at most `lastCode` and `longest` bytes each; null when its
/// tables have no place for some of them.
///
/// `Tables` are built by add() for each encoding, in rising order of the characters, then by buildDecoding() for the
/// way back, which both tell whether there was a place, and by close(), which gives back what was taken while they
/// grew.
template <typename MultiByteCodec, typename Tables>
Handle<const Codec> buildMultiByteCodec(const SetMapping& mapping, std::uint32_t lastCode, unsigned longest)
{
    const auto encodings = mapping.encodings(lastCode, longest);
    if (!encodings) {
        return {};
    }
    Tables tables;
    for (const EncodedCharacter& each : *encodings) {
        if (!tables.add(each)) {
            return {};
        }
    }
    if (!tables.buildDecoding(mapping)) {
        return {};
    }
    tables.m_tCommon.m_tBytes.close();
    tables.close();
    tables.m_tCommon.m_bAscii = isAscii(tables.m_tCommon);
    return makeHandle<const MultiByteCodec>(std::move(tables), mapping.replacements());
}

}  // namespace vel::transcoding_details
