#include "converterdecoder.h"

#include <unicode/utf16.h>

#include "icuconverter.h"

namespace vel::transcoding_details {

namespace {

constexpr std::int32_t kUnitsAtOnce = 1024;

/// Joins surrogate pairs, which may be divided between two blocks.
class Widener
{
public:
    explicit Widener(String& out) noexcept : m_rOut(out) {}

    void append(const UChar* units, std::int32_t length)
    {
        for (std::int32_t i = 0; i < length; ++i) {
            const UChar unit = units[i];
            if (m_nLead != 0 && U16_IS_TRAIL(unit)) {
                put(U16_GET_SUPPLEMENTARY(m_nLead, unit));
                m_nLead = 0;
            } else if (U16_IS_LEAD(unit)) {
                m_nLead = unit;
            } else {
                put(unit);
            }
        }
        flush();
    }

private:
    void put(UChar32 code)
    {
        m_aWide[m_nWide++] = static_cast<wchar_t>(code);
        if (m_nWide == kUnitsAtOnce) {
            flush();
        }
    }
    void flush()
    {
        m_rOut.append({m_aWide, m_nWide});
        m_nWide = 0;
    }

    String& m_rOut;
    wchar_t m_aWide[kUnitsAtOnce];
    std::size_t m_nWide = 0;
    UChar m_nLead = 0;
};

/// How many of the bytes that were read belong to the sequence at fault.
std::size_t faultySize(const UConverter& converter)
{
    char bytes[32];
    std::int8_t size = sizeof bytes;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_getInvalidChars(&converter, bytes, &size, &error);
    return U_SUCCESS(error) ? static_cast<std::size_t>(size) : 0;
}

}  // namespace

std::optional<std::size_t> decodeByConverter(const std::string& icuName, const char* bytes, std::size_t size,
                                             String& out)
{
    const ConverterPtr converter = reopenConverter(icuName.c_str());
    Widener widener(out);
    const char* source = bytes;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        UChar units[kUnitsAtOnce];
        UChar* unitsEnd = units;
        error = U_ZERO_ERROR;
        ucnv_toUnicode(converter.get(), &unitsEnd, units + kUnitsAtOnce, &source, bytes + size, nullptr, true, &error);
        widener.append(units, static_cast<std::int32_t>(unitsEnd - units));
    }
    checkMemory(error);
    if (U_SUCCESS(error)) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(source - bytes) - faultySize(*converter);
}

}  // namespace vel::transcoding_details
