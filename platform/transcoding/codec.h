#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "vel/core/handle.h"

namespace vel::transcoding_details {

/// Why a run over the input stopped.
enum EStop
{
    kStopInputEnd = 0,    ///< everything is done
    kStopOutputFull = 1,  ///< what comes next does not fit
    kStopInput = 2,       ///< what comes next is ill-formed, or is not in the set
    kStopEnd_ = 3
};

/// How far a run came: both places are behind what is done.
struct EncodeRun
{
    const wchar_t* m_pIn;
    char* m_pOut;
    EStop m_eStop;
};

struct DecodeRun
{
    const char* m_pIn;
    wchar_t* m_pOut;
    EStop m_eStop;
};

/// Characters of "&#0123456789;" in a set.
inline constexpr std::string_view kReferenceCharacters = "0123456789&#;";

/// The bytes that stand for what a set cannot express.
struct Replacements
{
    std::string m_sSubstitute;                            ///< the set's own substitute
    std::string m_sIllFormed;                             ///< U+FFFD where the set has it, else the substitute
    char m_aReference[kReferenceCharacters.size()] = {};  ///< the bytes of kReferenceCharacters
    bool m_bReference = false;                            ///< whether the set has them, each in one byte
};

/// A stateless character set with a loop of its own. Immutable, and shared by all threads.
class Codec : public RefCounted
{
public:
    static constexpr std::size_t kLeastDecodeRoom = 16;

    ~Codec() override;

    /// Encodes up to the first character that has no bytes in the set. Bytes of one character are not divided. May
    /// write anything to the room behind the result.
    virtual EncodeRun encode(const wchar_t* in, const wchar_t* inEnd, char* out, char* outEnd) const noexcept = 0;
    /// Decodes up to the first sequence that stands for no character, a truncated one at the end included. There is
    /// room for kLeastDecodeRoom characters or more.
    virtual DecodeRun decode(const char* in, const char* inEnd, wchar_t* out, wchar_t* outEnd) const noexcept = 0;
    /// What the tables take.
    virtual std::size_t tableBytes() const noexcept { return 0; }
    /// What stands before the first character of a text: a byte-order mark.
    virtual std::string_view prefix() const noexcept { return {}; }
    /// How many bytes at the front of a text are a byte-order mark that is no part of it.
    virtual std::size_t markSize(std::string_view) const noexcept { return 0; }
    /// What decodes a text that begins with these bytes, behind their mark. Throws std::bad_alloc.
    virtual Handle<const Codec> decoderOf(std::string_view) const { return Handle<const Codec>(this); }

    const Replacements& replacements() const noexcept { return m_tReplacements; }

protected:
    explicit Codec(Replacements replacements) : m_tReplacements(std::move(replacements)) {}

private:
    Replacements m_tReplacements;
};

constexpr bool isScalarValue(std::uint32_t value) noexcept
{
    return value < 0xD800 || (value >= 0xE000 && value <= 0x10FFFF);
}

constexpr std::uint32_t codeOf(wchar_t character) noexcept
{
    return static_cast<std::uint32_t>(character);
}

constexpr unsigned byteOf(char byte) noexcept
{
    return static_cast<unsigned char>(byte);
}

}  // namespace vel::transcoding_details
