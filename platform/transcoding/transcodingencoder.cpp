#include "vel/transcoding/transcodingencoder.h"

#include <cstring>

#include "codec.h"
#include "converterencoder.h"
#include "namedcoding.h"
#include "replacement.h"

namespace vel {

using namespace transcoding_details;

namespace {

/// Bytes that are encoded at once before they are appended to a string: they stay in the fastest cache.
constexpr std::size_t kAppendedAtOnce = 8192;

TranscodingResult resultOf(const EncodeRun& run, const wchar_t* text, const char* out, ETranscodingStatus status)
{
    return {static_cast<std::size_t>(run.m_pIn - text), static_cast<std::size_t>(run.m_pOut - out), status};
}

}  // namespace

TranscodingEncoder::TranscodingEncoder(const UniversalTranscoding& rTranscoding, EUnencodable ePolicy)
    : m_tTranscoding(rTranscoding), m_ePolicy(ePolicy)
{
    const NamedCoding& coding = m_tTranscoding.coding();
    if (coding.codec() == nullptr) {
        m_pConverter = std::make_unique<ConverterEncoder>(coding.icuName(), coding.converterTraits(), ePolicy);
    }
}

TranscodingEncoder::~TranscodingEncoder() = default;

TranscodingResult TranscodingEncoder::encodeByTable(const wchar_t* pText, std::size_t nLength, char* pOut,
                                                    std::size_t nCapacity)
{
    const Codec& codec = *m_tTranscoding.coding().codec();
    const wchar_t* textEnd = pText + nLength;
    char* outEnd = pOut + nCapacity;
    EncodeRun run{pText, pOut, kStopInputEnd};
    if (!m_bBegun && nLength > 0) {
        const std::string_view prefix = codec.prefix();
        if (!appendTo(run.m_pOut, outEnd, prefix)) {
            return resultOf(run, pText, pOut, kTranscodingOutputFull);
        }
        m_bBegun = true;
    }
    for (;;) {
        run = codec.encode(run.m_pIn, textEnd, run.m_pOut, outEnd);
        if (run.m_eStop != kStopInput) {
            const bool complete = run.m_eStop == kStopInputEnd;
            return resultOf(run, pText, pOut, complete ? kTranscodingComplete : kTranscodingOutputFull);
        }
        if (m_ePolicy == kUnencodableError) {
            return resultOf(run, pText, pOut, kTranscodingUnencodable);
        }
        const Replacement replacement(codec.replacements(), codeOf(*run.m_pIn), m_ePolicy);
        if (!appendTo(run.m_pOut, outEnd, replacement.bytes())) {
            return resultOf(run, pText, pOut, kTranscodingOutputFull);
        }
        ++run.m_pIn;
    }
}

TranscodingResult TranscodingEncoder::encode(const wchar_t* pText, std::size_t nLength, char* pOut,
                                             std::size_t nCapacity)
{
    return m_pConverter ? m_pConverter->encode(pText, nLength, pOut, nCapacity)
                        : encodeByTable(pText, nLength, pOut, nCapacity);
}

TranscodingResult TranscodingEncoder::finish(char* pOut, std::size_t nCapacity)
{
    m_bBegun = false;
    return m_pConverter ? m_pConverter->finish(pOut, nCapacity) : TranscodingResult();
}

std::optional<std::size_t> TranscodingEncoder::encode(const wchar_t* pText, std::size_t nLength, NarrowString& rOut)
{
    char bytes[kAppendedAtOnce];
    std::size_t done = 0;
    for (;;) {
        const TranscodingResult result = encode(pText + done, nLength - done, bytes, sizeof bytes);
        rOut.append({bytes, result.m_nWritten});
        done += result.m_nRead;
        if (result.m_eStatus != kTranscodingOutputFull) {
            return result.isComplete() ? std::nullopt : std::optional<std::size_t>(done);
        }
    }
}

void TranscodingEncoder::finish(NarrowString& rOut)
{
    char bytes[64];
    TranscodingResult result;
    do {
        result = finish(bytes, sizeof bytes);
        rOut.append({bytes, result.m_nWritten});
    } while (!result.isComplete());
}

}  // namespace vel
