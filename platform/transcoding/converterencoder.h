#pragma once

#include <string>

#include "icuconverter.h"
#include "vel/transcoding/transcodingresult.h"

namespace vel::transcoding_details {

/// Encodes through ICU's converter: the sets that have no own loop. What the converter gives is kept until the caller
/// has room for it.
class ConverterEncoder
{
public:
    /// `icuName`: of a converter that exists.
    ConverterEncoder(const std::string& icuName, ConverterTraits traits, EUnencodable policy);
    ConverterEncoder(const ConverterEncoder&) = delete;
    ConverterEncoder& operator=(const ConverterEncoder&) = delete;

    TranscodingResult encode(const wchar_t* text, std::size_t length, char* out, std::size_t capacity);
    TranscodingResult finish(char* out, std::size_t capacity);

private:
    struct Block;

    static void onUnencodable(const void* context, UConverterFromUnicodeArgs* arguments, const UChar* units,
                              std::int32_t length, UChar32 code, UConverterCallbackReason reason, UErrorCode* error);
    void start();
    void replace(UConverterFromUnicodeArgs& arguments, UChar32 code, UErrorCode& error) const;
    std::size_t fill(Block& block, const wchar_t* text, std::size_t length) const;
    bool feed(const Block& block, bool atEnd);
    std::size_t deliver(char* out, std::size_t capacity) noexcept;
    bool hasPending() const noexcept { return m_nDelivered < m_sPending.size(); }

    std::string m_sIcuName;
    ConverterTraits m_tTraits;
    ConverterPtr m_pConverter;  ///< null between two texts
    EUnencodable m_ePolicy;
    bool m_bFinishing = false;
    std::string m_sPending;
    std::size_t m_nDelivered = 0;
};

}  // namespace vel::transcoding_details
