#include "icureference.h"

#include <unicode/utf16.h>

#include <cstdio>
#include <stdexcept>

namespace transcodingtests {

namespace {

/// Leaves the error as it is, so that the converter stops. ICU's own function for that leaves out the characters that
/// are shown as nothing.
void stop(const void*, UConverterFromUnicodeArgs*, const UChar*, std::int32_t, UChar32, UConverterCallbackReason,
          UErrorCode*)
{}

}  // namespace

IcuReference::IcuReference(const std::string& name)
{
    UErrorCode error = U_ZERO_ERROR;
    m_pConverter.reset(ucnv_open(name.c_str(), &error));
    if (U_FAILURE(error)) {
        throw std::runtime_error("no converter " + name);
    }
    ucnv_setFallback(m_pConverter.get(), false);
    ucnv_setFromUCallBack(m_pConverter.get(), stop, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(m_pConverter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
}

std::optional<std::string> IcuReference::encode(std::wstring_view text) const
{
    std::u16string units;
    for (const wchar_t character : text) {
        UChar pair[2];
        std::int32_t length = 0;
        U16_APPEND_UNSAFE(pair, length, static_cast<UChar32>(character));
        units.append(pair, static_cast<std::size_t>(length));
    }
    std::string bytes(units.size() * 12 + 32, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t size = ucnv_fromUChars(m_pConverter.get(), bytes.data(), static_cast<std::int32_t>(bytes.size()),
                                              units.data(), static_cast<std::int32_t>(units.size()), &error);
    if (U_FAILURE(error)) {
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

IcuReference::Decoded IcuReference::decode(std::string_view bytes) const
{
    std::u16string units(bytes.size() * 2 + 16, u'\0');
    UChar* out = units.data();
    const char* source = bytes.data();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_resetToUnicode(m_pConverter.get());
    ucnv_toUnicode(m_pConverter.get(), &out, units.data() + units.size(), &source, bytes.data() + bytes.size(), nullptr,
                   true, &error);
    Decoded result;
    const std::int32_t length = static_cast<std::int32_t>(out - units.data());
    for (std::int32_t i = 0; i < length;) {
        UChar32 code = 0;
        U16_NEXT(units.data(), i, length, code);
        result.m_sText += static_cast<wchar_t>(code);
    }
    if (U_FAILURE(error)) {
        char faulty[32];
        std::int8_t size = sizeof faulty;
        UErrorCode askError = U_ZERO_ERROR;
        ucnv_getInvalidChars(m_pConverter.get(), faulty, &size, &askError);
        result.m_nFault = static_cast<std::size_t>(source - bytes.data()) - static_cast<std::size_t>(size);
    }
    return result;
}

std::string IcuReference::substitute() const
{
    char bytes[16];
    std::int8_t size = sizeof bytes;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_getSubstChars(m_pConverter.get(), bytes, &size, &error);
    return U_SUCCESS(error) ? std::string(bytes, static_cast<std::size_t>(size)) : std::string();
}

std::vector<std::string> allIcuNames()
{
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        names.emplace_back(ucnv_getAvailableName(i));
    }
    return names;
}

std::string icusOwnName(const std::string& name)
{
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name.c_str(), &error);
    const char* own = ucnv_getName(converter, &error);
    const std::string result = U_SUCCESS(error) ? own : "";
    ucnv_close(converter);
    return result;
}

const std::vector<std::string>& webNames()
{
    static const std::vector<std::string> kNames = {
        "UTF-8",        "UTF-16BE",       "UTF-16LE",     "UTF-16",       "US-ASCII",
        "ISO-8859-1",   "ISO-8859-2",     "ISO-8859-3",   "ISO-8859-4",   "ISO-8859-5",
        "ISO-8859-6",   "ISO-8859-7",     "ISO-8859-8",   "ISO-8859-10",  "ISO-8859-13",
        "ISO-8859-14",  "ISO-8859-15",    "KOI8-R",       "KOI8-U",       "ibm-866",
        "macintosh",    "x-mac-cyrillic", "windows-874",  "windows-1250", "windows-1251",
        "windows-1252", "windows-1253",   "windows-1254", "windows-1255", "windows-1256",
        "windows-1257", "windows-1258",   "Shift_JIS",    "EUC-JP",       "ISO-2022-JP",
        "EUC-KR",       "windows-949",    "Big5",         "Big5-HKSCS",   "GBK",
        "GB2312",       "gb18030",        "TIS-620",      "EUC-TW",       "HZ-GB-2312",
        "ibm-1047"};
    return kNames;
}

std::string shown(std::uint32_t code)
{
    char text[16];
    std::snprintf(text, sizeof text, "U+%04X", code);
    return text;
}

std::string hex(std::string_view bytes)
{
    std::string result;
    for (const char byte : bytes) {
        char text[4];
        std::snprintf(text, sizeof text, result.empty() ? "%02X" : " %02X", static_cast<unsigned char>(byte));
        result += text;
    }
    return result;
}

}  // namespace transcodingtests
