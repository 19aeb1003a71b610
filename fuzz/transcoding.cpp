// Encoding and decoding beside ICU's converter, and pieces beside the whole. The first byte chooses the set, the second
// one the size of the pieces.

#include <unicode/ucnv.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "require.h"
#include "vel/transcoding/transcodingencoder.h"
#include "widebytes.h"

namespace {

using fuzzing::require;

constexpr std::size_t kLongest = 4096;

constexpr const char* kSets[] = {"UTF-8",     "UTF-16BE",    "UTF-16LE", "UTF-16",    "windows-1252", "KOI8-R",
                                 "Shift_JIS", "EUC-JP",      "EUC-KR",   "Big5",      "Big5-HKSCS",   "GBK",
                                 "gb18030",   "ISO-2022-JP", "ibm-1047", "ISO-8859-1"};

struct Set
{
    explicit Set(const char* name) : m_tTranscoding(vel::stringFromUtf8(name).value())
    {
        UErrorCode error = U_ZERO_ERROR;
        m_pConverter = ucnv_open(name, &error);
        ucnv_setFallback(m_pConverter, false);
        ucnv_setFromUCallBack(m_pConverter, stop, nullptr, nullptr, nullptr, &error);
        ucnv_setToUCallBack(m_pConverter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
        require(U_SUCCESS(error));
    }
    ~Set() { ucnv_close(m_pConverter); }
    Set(const Set&) = delete;
    Set& operator=(const Set&) = delete;

    static void stop(const void*, UConverterFromUnicodeArgs*, const UChar*, std::int32_t, UChar32,
                     UConverterCallbackReason, UErrorCode*)
    {}

    vel::UniversalTranscoding m_tTranscoding;
    UConverter* m_pConverter;
};

const Set& setOf(std::uint8_t choice)
{
    static std::unique_ptr<const Set> sets[std::size(kSets)];
    std::unique_ptr<const Set>& chosen = sets[choice % std::size(kSets)];
    if (chosen == nullptr) {
        chosen = std::make_unique<const Set>(kSets[choice % std::size(kSets)]);
    }
    return *chosen;
}

/// ICU's bytes of a text, or nothing when the set cannot express it.
std::optional<std::string> encodedByIcu(const Set& set, std::wstring_view text)
{
    std::u16string units;
    for (const wchar_t character : text) {
        const std::uint32_t code = static_cast<std::uint32_t>(character);
        if (code > 0x10FFFF || U_IS_SURROGATE(code)) {
            return std::nullopt;
        }
        UChar pair[2];
        std::int32_t length = 0;
        U16_APPEND_UNSAFE(pair, length, code);
        units.append(pair, static_cast<std::size_t>(length));
    }
    std::string bytes(units.size() * 8 + 32, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t size = ucnv_fromUChars(set.m_pConverter, bytes.data(), static_cast<std::int32_t>(bytes.size()),
                                              units.data(), static_cast<std::int32_t>(units.size()), &error);
    bytes.resize(static_cast<std::size_t>(size));
    return U_SUCCESS(error) ? std::optional<std::string>(bytes) : std::nullopt;
}

std::wstring decodedByIcu(const Set& set, std::string_view bytes, bool& isWhole)
{
    std::u16string units(bytes.size() * 2 + 16, u'\0');
    UChar* out = units.data();
    const char* source = bytes.data();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_resetToUnicode(set.m_pConverter);
    ucnv_toUnicode(set.m_pConverter, &out, units.data() + units.size(), &source, bytes.data() + bytes.size(), nullptr,
                   true, &error);
    isWhole = U_SUCCESS(error);
    std::wstring text;
    const std::int32_t length = static_cast<std::int32_t>(out - units.data());
    for (std::int32_t i = 0; i < length;) {
        UChar32 code = 0;
        U16_NEXT(units.data(), i, length, code);
        text += static_cast<wchar_t>(code);
    }
    return text;
}

std::string inPieces(const Set& set, std::wstring_view text, vel::EUnencodable policy, std::size_t size)
{
    vel::TranscodingEncoder encoder(set.m_tTranscoding, policy);
    vel::NarrowString bytes;
    while (!text.empty()) {
        const std::size_t piece = std::min(size, text.size());
        const std::optional<std::size_t> fault = encoder.encode(text.data(), piece, bytes);
        if (fault) {
            return bytes.standard();
        }
        text.remove_prefix(piece);
    }
    encoder.finish(bytes);
    return bytes.standard();
}

void checkEncoding(const Set& set, const std::wstring& text, std::size_t pieceSize)
{
    for (const vel::EUnencodable policy :
         {vel::kUnencodableReference, vel::kUnencodableSubstitute, vel::kUnencodableError}) {
        vel::NarrowString bytes;
        const std::optional<std::size_t> fault = set.m_tTranscoding.encode(text.data(), text.size(), bytes, policy);
        require(bytes.standard() == inPieces(set, text, policy, pieceSize));
        require(set.m_tTranscoding.encodedSize(text.data(), text.size(), policy) == bytes.length());
        if (policy != vel::kUnencodableError) {
            require(!fault);
            continue;
        }
        const std::wstring_view before = std::wstring_view(text).substr(0, fault.value_or(text.size()));
        const std::optional<std::string> expected = encodedByIcu(set, before);
        // What comes before the fault can be encoded; with the character at fault it cannot.
        require(expected.has_value());
        require(fault || *expected == bytes.standard());
        require(!fault || !encodedByIcu(set, std::wstring_view(text).substr(0, *fault + 1)));
    }
}

void checkDecoding(const Set& set, std::string_view bytes)
{
    bool isWhole = false;
    const std::wstring expected = decodedByIcu(set, bytes, isWhole);
    vel::String text;
    const std::optional<std::size_t> fault = set.m_tTranscoding.decode(bytes.data(), bytes.size(), text);
    require(text.standard() == expected);
    require(fault.has_value() != isWhole);
    require(!fault || *fault <= bytes.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    const Set& set = setOf(data[0]);
    const std::size_t rest = std::min(size - 2, kLongest);
    // A block of exactly the input's size: a sanitizer sees a read past its end.
    const std::unique_ptr<char[]> bytes(new char[rest]);
    std::copy_n(data + 2, rest, bytes.get());
    checkEncoding(set, fuzzing::widen(data + 2, rest), 1 + data[1] % 32);
    checkDecoding(set, {bytes.get(), rest});
    return 0;
}
