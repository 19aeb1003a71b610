#include "numberweights.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <string>

#include "sortelements.h"

namespace vel::nls {

namespace {

constexpr std::size_t kMostDigits = 254;
constexpr std::size_t kMostValueDigits = 7;
constexpr std::uint32_t kBase = 254;
constexpr std::uint32_t kOneByte = 74;
constexpr std::uint32_t kTwoBytes = 40 * kBase;
constexpr std::uint32_t kThreeBytes = 16 * kBase * kBase;
constexpr std::uint32_t kFirst = 0x02;

/// Collects the bytes behind the lead byte, three to a weight.
class WeightBytes
{
public:
    WeightBytes(std::uint32_t lead, std::uint32_t* out) noexcept : m_nLead(lead), m_pOut(out) {}

    void put(std::uint32_t byte) noexcept
    {
        if (m_nShift == 0) {
            m_nShift = 24;
            m_pOut[m_nCount++] = m_nLead;
        }
        m_nShift -= 8;
        m_pOut[m_nCount - 1] |= byte << m_nShift;
    }
    std::size_t count() const noexcept { return m_nCount; }

private:
    std::uint32_t m_nLead;
    std::uint32_t* m_pOut;
    std::size_t m_nCount = 0;
    unsigned m_nShift = 0;
};

/// False for a value that is written by pairs of digits.
bool putValue(std::uint32_t value, WeightBytes& bytes) noexcept
{
    if (value < kOneByte) {
        bytes.put(kFirst + value);
        return true;
    }
    value -= kOneByte;
    if (value < kTwoBytes) {
        bytes.put(kFirst + kOneByte + value / kBase);
        bytes.put(kFirst + value % kBase);
        return true;
    }
    value -= kTwoBytes;
    if (value < kThreeBytes) {
        bytes.put(kFirst + kOneByte + 40 + value / kBase / kBase);
        bytes.put(kFirst + value / kBase % kBase);
        bytes.put(kFirst + value % kBase);
        return true;
    }
    return false;
}

/// The first digit is not 0; of an odd number it is a pair by itself.
void putPairs(const std::uint8_t* digits, std::size_t count, WeightBytes& bytes) noexcept
{
    bytes.put(static_cast<std::uint32_t>(0x80 + (count + 1) / 2));
    while (digits[count - 1] == 0 && digits[count - 2] == 0) {
        count -= 2;
    }
    for (std::size_t i = 0; i < count;) {
        std::uint32_t pair = digits[i++];
        if ((count - i) % 2 != 0) {
            pair = 10 * pair + digits[i++];
        }
        bytes.put(0x0B + 2 * pair - (i == count ? 1 : 0));
    }
}

/// At most kMostDigits, without a leading zero unless it is the only digit.
void putNumber(const std::uint8_t* digits, std::size_t count, WeightBytes& bytes) noexcept
{
    if (count <= kMostValueDigits) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            value = 10 * value + digits[i];
        }
        if (putValue(value, bytes)) {
            return;
        }
    }
    putPairs(digits, count, bytes);
}

/// The primary weights of a text as ICU has them; none if one of its elements has other weights than the common ones.
std::vector<std::uint32_t> primariesOf(const UCollator* collator, const char16_t* text)
{
    UErrorCode status = U_ZERO_ERROR;
    const ElementsPtr elements(ucol_openElements(collator, text, -1, &status));
    throwOnFailure(status);
    ElementReader reader(elements.get());
    std::vector<std::uint32_t> primaries;
    for (RawElement element; reader.next(element);) {
        if (element.m_nSecondary != kCommonWeight || element.m_nTertiary != kCommonWeight) {
            return {};
        }
        primaries.push_back(element.m_nPrimary);
    }
    return primaries;
}

}  // namespace

int digitValue(char32_t c) noexcept
{
    if (c < 0x80) {
        return c >= U'0' && c <= U'9' ? static_cast<int>(c - U'0') : -1;
    }
    return u_charDigitValue(static_cast<UChar32>(c));
}

NumberWeights::NumberWeights(const UCollator* collator)
{
    if (!ElementRules(collator).isNumeric()) {
        return;
    }
    const std::vector<std::uint32_t> zero = primariesOf(collator, u"0");
    m_nLead = zero.empty() ? 0 : zero[0] & 0xFF000000U;
    // Both sides of each border, and numbers of many digits: odd and even, with zeros at the end, beyond the longest.
    const std::u16string longest(kMostDigits, u'7');
    const std::u16string numbers[] = {u"0",           u"007",          u"73",           u"74",      u"10233",
                                      u"10234",       u"1042489",      u"1042490",      u"9999999", u"10000000",
                                      u"12345678901", u"990000000000", u"120000034500", longest,    longest + u"0012"};
    m_bComputed = std::all_of(std::begin(numbers), std::end(numbers),
                              [&](const std::u16string& number) { return isRight(collator, number.c_str()); });
}

bool NumberWeights::isRight(const UCollator* collator, const char16_t* number) const
{
    std::vector<std::uint8_t> digits;
    for (const char16_t* digit = number; *digit != 0; ++digit) {
        digits.push_back(static_cast<std::uint8_t>(*digit - u'0'));
    }
    std::vector<std::uint32_t> weights(mostWeights(digits.size()));
    weights.resize(weightsOf(digits.data(), digits.size(), weights.data()));
    return weights == primariesOf(collator, number);
}

std::size_t NumberWeights::weightsOf(const std::uint8_t* digits, std::size_t count, std::uint32_t* out) const noexcept
{
    std::size_t written = 0;
    for (std::size_t i = 0; i < count;) {
        while (i + 1 < count && digits[i] == 0) {
            ++i;
        }
        const std::size_t taken = std::min(count - i, kMostDigits);
        WeightBytes bytes(m_nLead, out + written);
        putNumber(digits + i, taken, bytes);
        written += bytes.count();
        i += taken;
    }
    return written;
}

}  // namespace vel::nls
