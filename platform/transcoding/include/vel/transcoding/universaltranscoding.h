#pragma once

#include <cstddef>
#include <optional>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/transcoding/transcodingresult.h"

namespace vel {

namespace transcoding_details {
class NamedCoding;
}  // namespace transcoding_details

/// Encodes wide text in a character set and decodes bytes of that set.
///
/// The set is found by name or alias, by ICU's rules: without regard to case, '-', '_' and blanks, and with leading
/// zeros of a number left out, so that "UTF-8", "utf8" and "Utf_08" are the same. Options of a name
/// ("ISO-2022-JP,version=1") are understood. Which bytes a name means is ICU's choice; where ICU and the web differ on
/// a label, the caller takes the name that encodes as wanted.
///
///     "utf-8"      -> UTF-8, no byte-order mark
///     "UTF-16BE"   -> big-endian, no byte-order mark ("UTF-16LE" likewise)
///     "UTF-16"     -> little-endian behind a byte-order mark; without one it is decoded as big-endian
///     "latin1"     -> ISO-8859-1 with the C1 controls
///     "sjis"       -> Shift_JIS
///     "", "utf-9"  -> not available
///
/// A value: copies are cheap and share one immutable table, which is built when the first object of that set is made
/// and stays until the process ends. Every function may be called from any thread at any time. Out of memory is
/// std::bad_alloc everywhere; what is named as output then holds what it held before, or a part of the result behind
/// it.
class WEBI18N_API UniversalTranscoding
{
public:
    /// Whether there is a character set of that name or alias. Builds no table.
    static bool isTranscodingAvailable(const String& sName);

    /// Throws Exception, "There is no character encoding named '%1'.", when there is no set of that name or alias.
    explicit UniversalTranscoding(const String& sName);

    // Out of line, where the shared part is known. A moved-from object stays usable: moving copies.
    UniversalTranscoding(const UniversalTranscoding& rOther) noexcept;
    UniversalTranscoding& operator=(const UniversalTranscoding& rOther) noexcept;
    ~UniversalTranscoding();

    /// The name that the constructor was given, as it was spelled. Valid as long as an object made from that spelling.
    const String& getName() const noexcept;
    /// The name of the set itself, the same for all its aliases, for example "ibm-943_P15A-2003" for "sjis".
    const String& getCanonicalName() const noexcept;

    /// Appends the bytes of a whole text to `rOut`, with the sequence that ends a stateful set's text. `pText` may be
    /// null when `nLength` is 0, and an empty text is no bytes, also where others begin with a byte-order mark.
    ///
    /// Result: nothing when all is encoded; under kUnencodableError the index of the first character at fault, and
    /// `rOut` then ends with the bytes of the characters before it, without the sequence that ends a stateful text.
    ///
    ///     L"na\u00EFve \u20AC", ISO-8859-15  -> "na\xEFve \xA4"
    ///     L"na\u00EFve \u20AC", KOI8-R       -> "na&#239;ve &#8364;"
    ///     the same, kUnencodableError        -> 2, "na"
    ///     L"\xD800", UTF-8                   -> "\xEF\xBF\xBD" (U+FFFD)
    ///     the same, kUnencodableError        -> 0, ""
    std::optional<std::size_t> encode(const wchar_t* pText, std::size_t nLength, NarrowString& rOut,
                                      EUnencodable ePolicy = kUnencodableReference) const;
    std::optional<std::size_t> encode(const String& sText, NarrowString& rOut,
                                      EUnencodable ePolicy = kUnencodableReference) const
    {
        return encode(sText.data(), sText.length(), rOut, ePolicy);
    }

    /// The same into a buffer of `nCapacity` bytes. When it is too small (kTranscodingOutputFull) the buffer holds a
    /// front part of the bytes; encodedSize() tells what is needed, a TranscodingEncoder goes on from where it stopped.
    TranscodingResult encode(const wchar_t* pText, std::size_t nLength, char* pOut, std::size_t nCapacity,
                             EUnencodable ePolicy = kUnencodableReference) const;

    /// The number of bytes that encode() writes for the same text and policy; under kUnencodableError those before the
    /// character at fault. It encodes the text to find out.
    std::size_t encodedSize(const wchar_t* pText, std::size_t nLength,
                            EUnencodable ePolicy = kUnencodableReference) const;

    /// Appends the characters of a whole text in this set to `rOut`. `pBytes` may be null when `nSize` is 0. A
    /// byte-order mark is taken away where the set's name asks for one ("UTF-16"), else it is the character U+FEFF.
    ///
    /// Result: nothing when all is decoded, else the offset of the first byte of the first sequence that is ill-formed,
    /// truncated, or stands for no character; `rOut` then ends with the characters before it.
    ///
    ///     "\xA4", ISO-8859-15        -> L"\u20AC"
    ///     "a\xC3", UTF-8             -> 1, L"a" (truncated)
    ///     "a\x81\x20", Shift_JIS     -> 1, L"a" (no such sequence)
    ///     "\xFE\xFF\x20\xAC", UTF-16 -> L"\u20AC"
    std::optional<std::size_t> decode(const char* pBytes, std::size_t nSize, String& rOut) const;

    /// The shared part, for the classes of this folder.
    const transcoding_details::NamedCoding& coding() const noexcept { return *m_hCoding.get(); }

private:
    Handle<const transcoding_details::NamedCoding> m_hCoding;
};

}  // namespace vel
