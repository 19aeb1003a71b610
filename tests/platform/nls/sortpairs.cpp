#include "sortpairs.h"

#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "sign.h"
#include "sorttexts.h"
#include "utf16text.h"
#include "vel/nls/sorttable.h"

namespace sortpairs {

namespace {

using testsupport::bytesOf;
using testsupport::sign;
using testsupport::wellFormed;
using testsupport::wideOf;
using vel::nls::SortStrength;
using vel::nls::SortTable;

constexpr UCollationStrength kStrengths[] = {UCOL_PRIMARY, UCOL_SECONDARY, UCOL_TERTIARY, UCOL_QUATERNARY,
                                             UCOL_IDENTICAL};
constexpr std::size_t kFamily = 8;

class Collator
{
public:
    explicit Collator(const std::string& locale)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_pCollator.reset(ucol_open(locale.c_str(), &status));
        if (U_FAILURE(status)) {
            throw std::runtime_error(locale + ": " + u_errorName(status));
        }
    }
    void setStrength(std::size_t i) { ucol_setStrength(m_pCollator.get(), kStrengths[i]); }
    std::string keyOf(const std::u16string& text) const
    {
        std::string key(8 * text.size() + 64, '\0');
        const auto make = [&] {
            return static_cast<std::size_t>(
                ucol_getSortKey(m_pCollator.get(), text.data(), static_cast<int32_t>(text.size()),
                                reinterpret_cast<std::uint8_t*>(key.data()), static_cast<int32_t>(key.size())));
        };
        std::size_t size = make();
        if (size > key.size()) {
            key.resize(size);
            size = make();
        }
        key.resize(size);
        return key;
    }

private:
    struct Close
    {
        void operator()(UCollator* collator) const { ucol_close(collator); }
    };
    std::unique_ptr<UCollator, Close> m_pCollator;
};

std::string keyOf(const SortTable& table, const std::string& bytes, SortStrength strength)
{
    std::string key(3 * bytes.size() + 64, '\0');
    const auto make = [&] {
        return table.makeKey(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), strength,
                             reinterpret_cast<unsigned char*>(key.data()), key.size());
    };
    std::size_t size = make();
    if (size > key.size()) {
        key.resize(size);
        size = make();
    }
    key.resize(size);
    return key;
}

std::string hex(const std::u16string& text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const char16_t unit : text) {
        for (int shift = 12; shift >= 0; shift -= 4) {
            result += kDigits[(unit >> shift) & 0xF];
        }
        result += ' ';
    }
    return result;
}

/// One sort under test, and ICU's.
class Contest
{
public:
    explicit Contest(const std::string& tag) : m_sTag(tag), m_tIcu(icuLocaleOf(tag)), m_pTable(SortTable::open(tag))
    {
        if (m_pTable == nullptr) {
            throw std::runtime_error(tag + ": no such sort");
        }
    }

    void compare(const std::vector<std::u16string>& texts)
    {
        std::vector<std::string> bytes;
        std::vector<std::wstring> wide;
        std::vector<std::u16string> clean;
        for (const std::u16string& text : texts) {
            bytes.push_back(bytesOf(text));
            wide.push_back(wideOf(text));
            clean.push_back(wellFormed(text));
        }
        for (std::size_t strength = 0; strength < std::size(kStrengths); ++strength) {
            m_tIcu.setStrength(strength);
            std::vector<std::string> expected;
            std::vector<std::string> keys;
            for (std::size_t i = 0; i < texts.size(); ++i) {
                expected.push_back(m_tIcu.keyOf(clean[i]));
                keys.push_back(keyOf(*m_pTable, bytes[i], static_cast<SortStrength>(strength)));
                check(keys[i].find('\0') == std::string::npos, strength, texts[i], texts[i], "a zero byte");
            }
            for (std::size_t i = 0; i < texts.size(); ++i) {
                for (std::size_t j = i + 1; j < texts.size(); ++j) {
                    const int order = sign(expected[i].compare(expected[j]));
                    check(sign(keys[i].compare(keys[j])) == order, strength, texts[i], texts[j], "keys");
                    check(m_pTable->compare(wide[i].data(), wide[i].size(), wide[j].data(), wide[j].size(),
                                            static_cast<SortStrength>(strength)) == order,
                          strength, texts[i], texts[j], "compare");
                }
            }
        }
        m_tReport.m_nPairs += texts.size() * (texts.size() - 1) / 2;
    }

    const Report& report() const noexcept { return m_tReport; }

private:
    void check(bool isRight, std::size_t strength, const std::u16string& a, const std::u16string& b, const char* what)
    {
        if (isRight) {
            return;
        }
        if (m_tReport.m_nDifferences++ == 0 || a.size() + b.size() < m_nShortest) {
            m_nShortest = a.size() + b.size();
            m_tReport.m_sFirst =
                m_sTag + ", strength " + std::to_string(strength) + ", " + what + ": " + hex(a) + "against " + hex(b);
        }
    }

    std::string m_sTag;
    Collator m_tIcu;
    std::shared_ptr<const SortTable> m_pTable;
    Report m_tReport;
    std::size_t m_nShortest = 0;
};

}  // namespace

std::string icuLocaleOf(const std::string& tag)
{
    UErrorCode status = U_ZERO_ERROR;
    char id[256];
    int32_t parsed = 0;
    uloc_forLanguageTag(tag.c_str(), id, sizeof id, &parsed, &status);
    if (U_FAILURE(status) || static_cast<std::size_t>(parsed) != tag.size()) {
        throw std::runtime_error(tag + ": no tag");
    }
    return id;
}

Report compareTexts(const std::string& tag, const std::vector<std::u16string>& texts)
{
    Contest contest(tag);
    contest.compare(texts);
    return contest.report();
}

Report comparePairs(const std::string& tag, std::size_t pairs, std::uint64_t seed)
{
    TextMaker maker(icuLocaleOf(tag), seed);
    Contest contest(tag);
    while (contest.report().m_nPairs < pairs) {
        contest.compare(maker.family(kFamily));
    }
    return contest.report();
}

}  // namespace sortpairs
