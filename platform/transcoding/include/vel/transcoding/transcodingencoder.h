#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "vel/core/api.h"
#include "vel/core/string.h"
#include "vel/transcoding/transcodingresult.h"
#include "vel/transcoding/universaltranscoding.h"

namespace vel {

namespace transcoding_details {
class ConverterEncoder;
}  // namespace transcoding_details

/// Encodes a text that comes in pieces, for responses that are never in memory as a whole: pieces cut at any place, and
/// buffers of any size, give the same bytes as the whole text at once.
///
///     TranscodingEncoder encoder(UniversalTranscoding(L"iso-2022-jp"));
///     while (more text) { encoder.encode(text, length, bytes); send(bytes); bytes.clear(); }
///     encoder.finish(bytes); send(bytes);
///
/// Its memory does not grow with the text. An object is used by one thread at a time; several objects share the set's
/// table. Not copyable: the state of a stateful set belongs to one output.
class WEBI18N_API TranscodingEncoder
{
public:
    /// With a buffer of this many bytes a call always gets further.
    static constexpr std::size_t kLeastCapacity = 16;

    explicit TranscodingEncoder(const UniversalTranscoding& rTranscoding, EUnencodable ePolicy = kUnencodableReference);
    TranscodingEncoder(const TranscodingEncoder&) = delete;
    TranscodingEncoder& operator=(const TranscodingEncoder&) = delete;
    ~TranscodingEncoder();

    /// Encodes a piece into a buffer of `nCapacity` bytes.
    ///
    /// kTranscodingComplete: the piece is taken. kTranscodingOutputFull: call again with the text from `m_nRead` on,
    /// also when that is empty, and with an empty buffer. kTranscodingUnencodable (kUnencodableError only): the
    /// character at `m_nRead` is at fault, all before it is written; the caller may go on behind it.
    /// A character's bytes may be divided between two buffers.
    TranscodingResult encode(const wchar_t* pText, std::size_t nLength, char* pOut, std::size_t nCapacity);

    /// Writes what is left: the sequence that takes a stateful set back to its first state, and characters that waited
    /// for what follows them. kTranscodingOutputFull: call it again. Once it is complete the encoder is as new, for the
    /// next text.
    TranscodingResult finish(char* pOut, std::size_t nCapacity);

    /// Appends a piece's bytes to `rOut`. Result as of UniversalTranscoding::encode.
    std::optional<std::size_t> encode(const wchar_t* pText, std::size_t nLength, NarrowString& rOut);
    /// Appends what is left to `rOut`.
    void finish(NarrowString& rOut);

private:
    TranscodingResult encodeByTable(const wchar_t* pText, std::size_t nLength, char* pOut, std::size_t nCapacity);

    UniversalTranscoding m_tTranscoding;
    /// For sets that go through ICU's converter; null for those with an own loop.
    std::unique_ptr<transcoding_details::ConverterEncoder> m_pConverter;
    EUnencodable m_ePolicy;
    /// Whether the byte-order mark, where there is one, is written.
    bool m_bBegun = false;
};

}  // namespace vel
