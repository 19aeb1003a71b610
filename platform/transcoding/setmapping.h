#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "codec.h"
#include "icuconverter.h"

namespace vel::transcoding_details {

/// The bytes of a character, the first one in the highest place that is used.
struct ByteSequence
{
    std::uint32_t m_nBytes = 0;
    unsigned m_nLength = 0;
};

struct EncodedCharacter
{
    std::uint32_t m_nCode;
    ByteSequence m_tBytes;
};

/// What a converter makes of one sequence of bytes.
struct DecodedSequence
{
    enum Kind
    {
        kCharacter,
        kIncomplete,  ///< more bytes must follow
        kNone         ///< stands for no character, or for several
    };
    Kind m_eKind = kNone;
    std::uint32_t m_nCode = 0;
};

/// Asks a converter of a stateless set for its mappings, one at a time.
class SetMapping
{
public:
    explicit SetMapping(UConverter& converter) noexcept : m_rConverter(converter) {}

    /// Every character up to `last` that the set has, in rising order; nothing when some need more than `longest` bytes
    /// or depend on what follows them.
    std::optional<std::vector<EncodedCharacter>> encodings(std::uint32_t last, unsigned longest) const;
    /// The bytes of one character; a length of 0 when the set does not have it.
    ByteSequence encode(std::uint32_t code) const;
    DecodedSequence decode(ByteSequence bytes) const;

    /// The set's substitute, its bytes of U+FFFD, and those of references.
    Replacements replacements() const;

private:
    UConverter& m_rConverter;
};

}  // namespace vel::transcoding_details
