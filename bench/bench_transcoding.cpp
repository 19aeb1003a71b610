#include <iconv.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <cstring>
#include <cwchar>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "rows.h"
#include "vel/transcoding/universaltranscoding.h"
#include "vel/transcoding/utf16.h"

// Responses encoded from wide text, beside the C library's iconv, which takes wide text itself, and ICU's converter,
// which takes UTF-16 and so needs the text converted first.

namespace bench {

namespace {

using vel::UniversalTranscoding;

/// What a page of a report holds: running text with digits, punctuation and line ends.
constexpr const wchar_t* kEnglish =
    L"Revenue of the northern region rose by 12.4 per cent in the third quarter of 2005, while orders from abroad fell "
    L"behind the plan.\nThe forecast for the following year stays unchanged; details are in table 7 on page 31.\n";
constexpr const wchar_t* kLatin =
    L"Les recettes de la r\u00E9gion m\u00E9ridionale ont augment\u00E9 de 12,4 pour cent au troisi\u00E8me trimestre, "
    L"malgr\u00E9 la baisse des commandes \u00E0 l'\u00E9tranger.\nDie Umsatzerl\u00F6se der n\u00F6rdlichen Region "
    L"\u00FCbertreffen den Plan, wof\u00FCr vor allem gr\u00F6\u00DFere Auftr\u00E4ge sorgen; Stra\u00DFe 7, "
    L"M\u00FCnchen.\n";
/// The same with the quotation marks and the euro sign, which ISO-8859-1 lacks.
constexpr const wchar_t* kWindows =
    L"Die \u201EUmsatzerl\u00F6se\u201C der n\u00F6rdlichen Region \u2013 rund 12\u20AC je St\u00FCck \u2013 "
    L"\u00FCbertreffen den Plan, wof\u00FCr vor allem gr\u00F6\u00DFere Auftr\u00E4ge aus \u00D6sterreich sorgen.\n";
constexpr const wchar_t* kRussian =
    L"\u0412\u044B\u0440\u0443\u0447\u043A\u0430 \u0441\u0435\u0432\u0435\u0440\u043D\u043E\u0433\u043E "
    L"\u0440\u0435\u0433\u0438\u043E\u043D\u0430 \u0432\u044B\u0440\u043E\u0441\u043B\u0430 \u043D\u0430 12,4 "
    L"\u043F\u0440\u043E\u0446\u0435\u043D\u0442\u0430, \u0430 \u0437\u0430\u043A\u0430\u0437\u044B \u0438\u0437-"
    L"\u0437\u0430 \u0440\u0443\u0431\u0435\u0436\u0430 \u0441\u043D\u0438\u0437\u0438\u043B\u0438\u0441\u044C. "
    L"\u041F\u0440\u043E\u0433\u043D\u043E\u0437 \u043D\u0430 \u0441\u043B\u0435\u0434\u0443\u044E\u0449\u0438\u0439 "
    L"\u0433\u043E\u0434 \u043D\u0435 \u0438\u0437\u043C\u0435\u043D\u0438\u043B\u0441\u044F.\n";
constexpr const wchar_t* kChinese =
    L"\u5317\u65B9\u5730\u533A\u7684\u9500\u552E\u989D\u5728\u7B2C\u4E09\u5B63\u5EA6\u589E\u957F\u4E8612.4%\uFF0C\u800C"
    L"\u56FD\u5916\u8BA2\u5355\u4F4E\u4E8E\u8BA1\u5212\u3002\u660E\u5E74\u7684\u9884\u6D4B\u4FDD\u6301\u4E0D\u53D8"
    L"\uFF1B"
    L"\u8BE6\u60C5\u89C1\u7B2C\u4E09\u5341\u4E00\u9875\u8868\u4E03\u3002\n";
constexpr const wchar_t* kTraditional =
    L"\u5317\u65B9\u5730\u5340\u7684\u92B7\u552E\u984D\u5728\u7B2C\u4E09\u5B63\u5EA6\u589E\u9577\u4E8612.4%\uFF0C\u800C"
    L"\u570B\u5916\u8A02\u55AE\u4F4E\u65BC\u8A08\u756B\u3002\u660E\u5E74\u7684\u9810\u6E2C\u4FDD\u6301\u4E0D\u8B8A"
    L"\uFF1B"
    L"\u8A73\u60C5\u898B\u7B2C\u4E09\u5341\u4E00\u9801\u8868\u4E03\u3002\n";
constexpr const wchar_t* kJapanese =
    L"\u5317\u90E8\u5730\u57DF\u306E\u58F2\u4E0A\u9AD8\u306F\u7B2C3\u56DB\u534A\u671F\u306B12.4%"
    L"\u5897\u52A0\u3057\u305F"
    L"\u304C\u3001\u6D77\u5916\u304B\u3089\u306E\u53D7\u6CE8\u306F\u8A08\u753B\u3092\u4E0B\u56DE\u3063\u305F\u3002"
    L"\u6765"
    L"\u5E74\u306E\u4E88\u6E2C\u306F\u5909\u308F\u3089\u306A\u3044\u3002\u30C7\u30FC\u30BF\u306F\u8868\u306E\u3068"
    L"\u304A"
    L"\u308A\u3002\n";
constexpr const wchar_t* kKorean =
    L"\uBD81\uBD80 \uC9C0\uC5ED\uC758 \uB9E4\uCD9C\uC740 \uC138 \uBC88\uC9F8 \uBD84\uAE30\uC5D0 12.4% "
    L"\uC99D\uAC00\uD558\uC600\uC73C\uB098, \uD574\uC678 \uC8FC\uBB38\uC740 \uACC4\uD68D\uC5D0 \uBBF8\uCE58\uC9C0 "
    L"\uBABB\uD558\uC600\uB2E4.\n";

constexpr std::size_t kCharacters = 16384;

std::wstring pageOf(const wchar_t* text)
{
    const std::size_t length = std::wcslen(text);
    std::wstring page;
    while (page.size() + length <= kCharacters) {
        page += text;
    }
    return page;
}

struct Sample
{
    const char* m_sName;
    const wchar_t* m_sText;
    /// The same set for all three.
    const wchar_t* m_sOurs;
    const char* m_sIconv;
    double m_nIconvRatio;
};

constexpr Sample kSamples[] = {
    {"UTF-8, ASCII text", kEnglish, L"UTF-8", "UTF-8", 4},
    {"UTF-8, Latin text", kLatin, L"UTF-8", "UTF-8", 4},
    {"UTF-8, Russian text", kRussian, L"UTF-8", "UTF-8", 3},
    {"UTF-8, Chinese text", kChinese, L"UTF-8", "UTF-8", 3},
    {"ISO-8859-1, Latin text", kLatin, L"ISO-8859-1", "ISO-8859-1", 2},
    {"windows-1252, Latin text", kLatin, L"windows-1252", "CP1252", 2},
    {"windows-1252, with quotation marks", kWindows, L"windows-1252", "CP1252", 2},
    {"KOI8-R, Russian text", kRussian, L"KOI8-R", "KOI8-R", 2},
    {"Shift_JIS, Japanese text", kJapanese, L"Shift_JIS", "CP932", 2.5},
    {"EUC-KR, Korean text", kKorean, L"EUC-KR", "EUC-KR", 2.5},
    {"Big5, Chinese text", kTraditional, L"Big5", "BIG5", 2.5},
    {"GB18030, Chinese text", kChinese, L"gb18030", "GB18030", 4},
    {"UTF-16BE, Chinese text", kChinese, L"UTF-16BE", "UTF-16BE", 3},
};

/// All three encode the same bytes, else the row compares nothing.
void requireSame(const std::string& bytes, const std::string& expected, const char* who)
{
    if (bytes != expected) {
        throw std::runtime_error(std::string(who) + " encodes other bytes");
    }
}

std::string expectedBytes(const UniversalTranscoding& transcoding, const std::wstring& page)
{
    vel::NarrowString bytes;
    if (transcoding.encode(page.data(), page.size(), bytes, vel::kUnencodableError)) {
        throw std::runtime_error("the text is not in the set");
    }
    return bytes.standard();
}

Batch ours(const UniversalTranscoding& transcoding, const std::wstring& page)
{
    return repeated([transcoding, page, buffer = std::string(page.size() * 4, '\0')]() mutable {
        keep(page);
        keep(transcoding.encode(page.data(), page.size(), buffer.data(), buffer.size()));
        keep(buffer);
    });
}

// ----------------------------------------------------------------------------------------------------------- peers

class Iconv
{
public:
    explicit Iconv(const char* name) : m_tHandle(iconv_open(name, "WCHAR_T"))
    {
        if (m_tHandle == reinterpret_cast<iconv_t>(-1)) {
            throw std::runtime_error(std::string("iconv has no ") + name);
        }
    }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    ~Iconv() { iconv_close(m_tHandle); }

    std::size_t encode(const std::wstring& text, std::string& buffer) const
    {
        char* in = const_cast<char*>(reinterpret_cast<const char*>(text.data()));
        std::size_t inSize = text.size() * sizeof(wchar_t);
        char* out = buffer.data();
        std::size_t outSize = buffer.size();
        iconv(m_tHandle, &in, &inSize, &out, &outSize);
        return static_cast<std::size_t>(out - buffer.data());
    }

private:
    iconv_t m_tHandle;
};

Batch iconvPeer(const Sample& sample, const std::wstring& page, const std::string& expected)
{
    const auto converter = std::make_shared<const Iconv>(sample.m_sIconv);
    std::string buffer(page.size() * 4, '\0');
    const std::size_t size = converter->encode(page, buffer);
    requireSame(buffer.substr(0, size), expected, "iconv");
    return repeated([converter, page, buffer]() mutable {
        keep(page);
        keep(converter->encode(page, buffer));
        keep(buffer);
    });
}

class IcuEncoder
{
public:
    explicit IcuEncoder(const vel::String& name) : m_vUnits(2 * kCharacters)
    {
        UErrorCode error = U_ZERO_ERROR;
        m_pConverter.reset(ucnv_open(std::string(name.begin(), name.end()).c_str(), &error));
        if (U_FAILURE(error)) {
            throw std::runtime_error("ICU has no such converter");
        }
    }

    std::size_t encode(const std::wstring& text, std::string& buffer)
    {
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t units = 0;
        u_strFromUTF32(m_vUnits.data(), static_cast<std::int32_t>(m_vUnits.size()), &units,
                       reinterpret_cast<const UChar32*>(text.data()), static_cast<std::int32_t>(text.size()), &error);
        return static_cast<std::size_t>(ucnv_fromUChars(m_pConverter.get(), buffer.data(),
                                                        static_cast<std::int32_t>(buffer.size()), m_vUnits.data(),
                                                        units, &error));
    }

private:
    struct Close
    {
        void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
    };
    std::unique_ptr<UConverter, Close> m_pConverter;
    std::vector<UChar> m_vUnits;
};

Batch icuPeer(const Sample& sample, const std::wstring& page, const std::string& expected)
{
    const auto converter = std::make_shared<IcuEncoder>(sample.m_sOurs);
    std::string buffer(page.size() * 4, '\0');
    const std::size_t size = converter->encode(page, buffer);
    requireSame(buffer.substr(0, size), expected, "ICU");
    return repeated([converter, page, buffer]() mutable {
        keep(page);
        keep(converter->encode(page, buffer));
        keep(buffer);
    });
}

Batch copyPeer(const std::string& bytes)
{
    return repeated([bytes, buffer = std::string(bytes.size(), '\0')]() mutable {
        keep(bytes);
        std::memcpy(buffer.data(), bytes.data(), bytes.size());
        keep(buffer);
    });
}

using Peer = Batch (*)(const Sample&, const std::wstring&, const std::string&);

Contest contestOf(const Sample& sample, Peer peer)
{
    const std::wstring page = pageOf(sample.m_sText);
    const UniversalTranscoding transcoding(sample.m_sOurs);
    return {ours(transcoding, page), peer(sample, page, expectedBytes(transcoding, page))};
}

Contest copyContest(const wchar_t* text)
{
    const std::wstring page = pageOf(text);
    const UniversalTranscoding transcoding(L"UTF-8");
    return {ours(transcoding, page), copyPeer(expectedBytes(transcoding, page))};
}

/// The functions of utf16.h, which have no policy, beside a copy of what they read.
Contest utf16Contest()
{
    const std::wstring page = pageOf(kChinese);
    const std::string read(reinterpret_cast<const char*>(page.data()), page.size() * sizeof(wchar_t));
    return {repeated([page, buffer = std::string(page.size() * vel::kUtf16BytesPerCharacter, '\0')]() mutable {
                keep(page);
                keep(vel::encodeUtf16BigEndian(page.data(), page.size(), buffer.data()));
                keep(buffer);
            }),
            copyPeer(read)};
}

}  // namespace

void addTranscodingRows(std::vector<Situation>& rows)
{
    for (const Sample& sample : kSamples) {
        rows.push_back({std::string("encode ") + sample.m_sName,
                        "iconv from WCHAR_T",
                        {Target::kRatioAtLeast, sample.m_nIconvRatio},
                        [&sample] { return contestOf(sample, iconvPeer); }});
        rows.push_back({std::string("encode ") + sample.m_sName,
                        "ICU's converter, through UTF-16",
                        {Target::kRatioAtLeast, 4},
                        [&sample] { return contestOf(sample, icuPeer); }});
    }
    rows.push_back({"encode UTF-8, ASCII text", "memcpy of the output", {}, [] { return copyContest(kEnglish); }});
    rows.push_back({"encodeUtf16BigEndian, Chinese text", "memcpy of the input", {}, utf16Contest});
}

}  // namespace bench
