#include "vel/transcoding/universaltranscoding.h"

#include "converterdecoder.h"
#include "namedcoding.h"
#include "vel/transcoding/transcodingencoder.h"

namespace vel {

using namespace transcoding_details;

namespace {

/// Characters that are decoded at once before they are appended to a string.
constexpr std::size_t kDecodedAtOnce = 2048;

Handle<const NamedCoding> findOrThrow(const String& name)
{
    Handle<const NamedCoding> found = NamedCoding::find(name);
    if (found.isNull()) {
        throw Exception(Message::text(L"There is no character encoding named '%1'.").insert(1, name));
    }
    return found;
}

std::optional<std::size_t> decodeByTable(const Codec& codec, std::string_view bytes, String& out)
{
    const Handle<const Codec> decoder = codec.decoderOf(bytes);
    const char* bytesEnd = bytes.data() + bytes.size();
    DecodeRun run{bytes.data() + codec.markSize(bytes), nullptr, kStopOutputFull};
    while (run.m_eStop == kStopOutputFull) {
        wchar_t characters[kDecodedAtOnce];
        run = decoder->decode(run.m_pIn, bytesEnd, characters, characters + kDecodedAtOnce);
        out.append({characters, static_cast<std::size_t>(run.m_pOut - characters)});
    }
    return run.m_eStop == kStopInputEnd
               ? std::nullopt
               : std::optional<std::size_t>(static_cast<std::size_t>(run.m_pIn - bytes.data()));
}

}  // namespace

bool UniversalTranscoding::isTranscodingAvailable(const String& sName)
{
    return NamedCoding::exists(sName);
}

UniversalTranscoding::UniversalTranscoding(const String& sName) : m_hCoding(findOrThrow(sName))
{}

UniversalTranscoding::UniversalTranscoding(const UniversalTranscoding& rOther) noexcept = default;
UniversalTranscoding& UniversalTranscoding::operator=(const UniversalTranscoding& rOther) noexcept = default;
UniversalTranscoding::~UniversalTranscoding() = default;

const String& UniversalTranscoding::getName() const noexcept
{
    return coding().name();
}

const String& UniversalTranscoding::getCanonicalName() const noexcept
{
    return coding().canonicalName();
}

std::optional<std::size_t> UniversalTranscoding::encode(const wchar_t* pText, std::size_t nLength, NarrowString& rOut,
                                                        EUnencodable ePolicy) const
{
    TranscodingEncoder encoder(*this, ePolicy);
    const std::optional<std::size_t> fault = encoder.encode(pText, nLength, rOut);
    if (!fault) {
        encoder.finish(rOut);
    }
    return fault;
}

TranscodingResult UniversalTranscoding::encode(const wchar_t* pText, std::size_t nLength, char* pOut,
                                               std::size_t nCapacity, EUnencodable ePolicy) const
{
    TranscodingEncoder encoder(*this, ePolicy);
    TranscodingResult result = encoder.encode(pText, nLength, pOut, nCapacity);
    if (result.isComplete()) {
        const TranscodingResult end = encoder.finish(pOut + result.m_nWritten, nCapacity - result.m_nWritten);
        result.m_nWritten += end.m_nWritten;
        result.m_eStatus = end.m_eStatus;
    }
    return result;
}

std::size_t UniversalTranscoding::encodedSize(const wchar_t* pText, std::size_t nLength, EUnencodable ePolicy) const
{
    char bytes[4096];
    TranscodingEncoder encoder(*this, ePolicy);
    std::size_t size = 0;
    std::size_t read = 0;
    TranscodingResult result;
    do {
        result = encoder.encode(pText + read, nLength - read, bytes, sizeof bytes);
        read += result.m_nRead;
        size += result.m_nWritten;
    } while (result.m_eStatus == kTranscodingOutputFull);
    return result.isComplete() ? size + encoder.finish(bytes, sizeof bytes).m_nWritten : size;
}

std::optional<std::size_t> UniversalTranscoding::decode(const char* pBytes, std::size_t nSize, String& rOut) const
{
    const Codec* codec = coding().codec();
    return codec == nullptr ? decodeByConverter(coding().icuName(), pBytes, nSize, rOut)
                            : decodeByTable(*codec, {pBytes, nSize}, rOut);
}

}  // namespace vel
