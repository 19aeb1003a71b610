#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "rows.h"
#include "sortcorpora.h"
#include "vel/nls/sorttable.h"
#include "vel/transcoding/utf16.h"

// The tables behind the collator: how long their keys are, what the texts cost that they do not hold, and what they
// cost themselves.

namespace bench {

namespace {

using vel::nls::SortStrength;
using vel::nls::SortTable;

struct CloseCollator
{
    void operator()(UCollator* collator) const { ucol_close(collator); }
};

std::shared_ptr<UCollator> openIcu(const std::string& tag, UCollationStrength strength)
{
    UErrorCode status = U_ZERO_ERROR;
    char id[256];
    int32_t parsed = 0;
    uloc_forLanguageTag(tag.c_str(), id, sizeof id, &parsed, &status);
    std::shared_ptr<UCollator> collator(ucol_open(id, &status), CloseCollator());
    if (U_FAILURE(status)) {
        throw std::runtime_error(tag + ": " + u_errorName(status));
    }
    ucol_setStrength(collator.get(), strength);
    return collator;
}

std::shared_ptr<const SortTable> openOurs(const std::string& tag)
{
    std::shared_ptr<const SortTable> table = SortTable::open(tag);
    if (table == nullptr) {
        throw std::runtime_error(tag + ": no such sort");
    }
    return table;
}

using Texts = std::vector<std::u16string>;
using WideTexts = std::vector<std::wstring>;

/// One wide character for each code point.
WideTexts widen(const Texts& texts)
{
    WideTexts wide;
    for (const std::u16string& text : texts) {
        std::wstring& result = wide.emplace_back();
        for (std::size_t i = 0; i < text.size(); ++i) {
            char32_t c = text[i];
            if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size()) {
                c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00U);
            }
            result += static_cast<wchar_t>(c);
        }
    }
    return wide;
}

/// Makes the keys of all texts; returns their bytes.
class OurKeys
{
public:
    OurKeys(const std::string& tag, const Texts& texts, SortStrength strength)
        : m_pTable(openOurs(tag)), m_tTexts(widen(texts)), m_eStrength(strength)
    {}

    std::size_t operator()()
    {
        std::size_t bytes = 0;
        for (const std::wstring& text : m_tTexts) {
            m_tUnits.resize(4 * text.size() + 1);
            m_tKey.resize(std::max(m_tKey.size(), 5 * text.size() + 6));
            const std::size_t count =
                vel::encodeUtf16BigEndian(text.data(), text.size(), reinterpret_cast<char*>(m_tUnits.data()));
            bytes += m_pTable->makeKey(m_tUnits.data(), count, m_eStrength, m_tKey.data(), m_tKey.size());
            keep(m_tKey);
        }
        return bytes;
    }

private:
    std::shared_ptr<const SortTable> m_pTable;
    WideTexts m_tTexts;
    SortStrength m_eStrength;
    std::vector<unsigned char> m_tUnits;
    std::vector<unsigned char> m_tKey;
};

class IcuKeys
{
public:
    IcuKeys(const std::string& tag, const Texts& texts, UCollationStrength strength)
        : m_pCollator(openIcu(tag, strength)), m_tTexts(texts), m_tKey(100'000)
    {}

    std::size_t operator()()
    {
        std::size_t bytes = 0;
        for (const std::u16string& text : m_tTexts) {
            bytes += static_cast<std::size_t>(ucol_getSortKey(m_pCollator.get(), text.data(),
                                                              static_cast<int32_t>(text.size()), m_tKey.data(),
                                                              static_cast<int32_t>(m_tKey.size())));
            keep(m_tKey);
        }
        return bytes;
    }

private:
    std::shared_ptr<UCollator> m_pCollator;
    Texts m_tTexts;
    std::vector<std::uint8_t> m_tKey;
};

/// Bytes of a key on average.
template <typename Keys>
Batch lengthOf(Keys keys, std::size_t texts)
{
    return [keys, texts](std::size_t repetitions) mutable {
        return static_cast<double>(keys()) / static_cast<double>(texts) * static_cast<double>(repetitions);
    };
}

const SortCorpus& corpus(std::size_t i)
{
    return sortCorpora()[i];
}

constexpr std::pair<const char*, const char*> kNames[] = {
    {"ASCII", "en"}, {"words", "en"}, {"en", "en"}, {"de", "de"}, {"sv", "sv"}, {"fr-CA", "fr-CA"}, {"ru", "ru"},
    {"ar", "ar"},    {"th", "th"},    {"ja", "ja"}, {"ko", "ko"}, {"zh", "zh"}, {"mixed", "und"}};

void addLengthRow(std::vector<Situation>& rows, std::size_t i)
{
    const std::string name = kNames[i].first;
    rows.push_back({"sort key " + name + ", tertiary, bytes",
                    "ucol_getSortKey",
                    {Target::kRatioAtLeast, name == "mixed" ? 1.0 : 1 / 0.9},
                    [i] {
                        const SortCorpus& texts = corpus(i);
                        const std::size_t count = texts.m_tTexts.size();
                        return Contest{lengthOf(OurKeys(texts.m_sTag, texts.m_tTexts, SortStrength::kTertiary), count),
                                       lengthOf(IcuKeys(texts.m_sTag, texts.m_tTexts, UCOL_TERTIARY), count), 1};
                    },
                    kBytes});
}

/// Texts with nothing that one entry of a table tells, by what they are made of.
struct HardTexts
{
    const char* m_pName;
    const char* m_pTag;
    std::vector<std::u16string> m_tPieces;
};

std::vector<HardTexts> hardTexts()
{
    return {
        {"private use", "und", {u"\uE000", u"\uE123", u"\uEFFF", u"\uF00D", u"\uF8FF"}},
        {"ideographs beyond U+FFFF", "und", {u"\U00020000", u"\U0002A6D6", u"\U0002B740", u"\U00030000"}},
        {"numbers, kn", "en-u-kn", {u"1-", u"20-", u"307-", u"4096-"}},
        {"marks out of order", "vi", {u"a\u0323\u0302", u"o\u0301\u0323", u"e\u0302\u0323", u"u\u0301\u0328"}},
        {"syllables of three parts", "my", {u"\u1000\u103B\u1031", u"\u1019\u1039\u1019", u"\u1004\u103A\u1039"}},
    };
}

Texts textsOf(const std::vector<std::u16string>& pieces)
{
    constexpr std::size_t kTexts = 1000;
    constexpr std::size_t kPieces = 10;
    Texts texts;
    for (std::size_t i = 0; i < kTexts; ++i) {
        std::u16string text;
        for (std::size_t k = 0; k < kPieces; ++k) {
            text += pieces[(i * 31 + k * 7 + i * k) % pieces.size()];
        }
        texts.push_back(text);
    }
    return texts;
}

void addTableRows(std::vector<Situation>& rows)
{
    for (const char* tag : {"en", "sv", "ja", "zh"}) {
        rows.push_back({std::string("first use of a sort, ") + tag, "", {Target::kOursBelow, 60e6}, [tag] {
                            return Contest{building([tag] { return openOurs(tag); }), {}, 1};
                        }});
    }
    rows.push_back({"later use of a sort, sv", "", {Target::kOursBelow, 2'000}, [] {
                        return Contest{repeated([held = openOurs("sv")] { keep(SortTable::open("sv")); }), {}};
                    }});
    for (const auto& [tag, most] : {std::pair("en", 4e6), std::pair("ja", 4e6), std::pair("zh", 6e6)}) {
        rows.push_back({std::string("memory of a sort, ") + tag,
                        "",
                        {Target::kOursBelow, most},
                        [name = std::string(tag)] {
                            return Contest{[name](std::size_t repetitions) {
                                               return static_cast<double>(openOurs(name)->memory() * repetitions);
                                           },
                                           {},
                                           1};
                        },
                        kBytes});
    }
}

}  // namespace

void addSortKeyRows(std::vector<Situation>& rows)
{
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
        addLengthRow(rows, i);
    }
    for (const HardTexts& each : hardTexts()) {
        rows.push_back({std::string("sort key of hard texts, ") + each.m_pName,
                        "ucol_getSortKey",
                        {Target::kRatioAtLeast, 0.7},
                        [each] {
                            const Texts texts = textsOf(each.m_tPieces);
                            return Contest{repeated(OurKeys(each.m_pTag, texts, SortStrength::kTertiary), texts.size()),
                                           repeated(IcuKeys(each.m_pTag, texts, UCOL_TERTIARY), texts.size())};
                        }});
    }
    addTableRows(rows);
}

}  // namespace bench
