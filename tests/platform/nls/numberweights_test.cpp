#include "numberweights.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "icuhandles.h"

namespace {

using vel::nls::NumberWeights;

class NumberWeightsOf : public testing::Test
{
protected:
    static vel::nls::CollatorPtr open(const char* locale)
    {
        UErrorCode status = U_ZERO_ERROR;
        return vel::nls::CollatorPtr(ucol_open(locale, &status));
    }
    /// The bytes behind the lead byte of each weight, which is the same in all; those of the last one end with a zero.
    std::vector<unsigned> bytesOf(const std::string& digits) const
    {
        std::vector<std::uint8_t> values;
        for (const char digit : digits) {
            values.push_back(static_cast<std::uint8_t>(digit - '0'));
        }
        std::vector<std::uint32_t> weights(NumberWeights::mostWeights(values.size()));
        weights.resize(m_tNumbers.weightsOf(values.data(), values.size(), weights.data()));
        std::vector<unsigned> bytes;
        for (const std::uint32_t weight : weights) {
            EXPECT_EQ(weight >> 24, weights[0] >> 24);
            for (const unsigned shift : {16U, 8U, 0U}) {
                bytes.push_back((weight >> shift) & 0xFF);
            }
        }
        while (!bytes.empty() && bytes.back() == 0) {
            bytes.pop_back();
        }
        return bytes;
    }

    vel::nls::CollatorPtr m_pCollator = open("en@colNumeric=yes");
    NumberWeights m_tNumbers{m_pCollator.get()};
};

using Bytes = std::vector<unsigned>;

TEST_F(NumberWeightsOf, TheCollatorAreComputedWhereItReadsNumbers)
{
    EXPECT_TRUE(m_tNumbers.areComputed());
    EXPECT_FALSE(NumberWeights(open("en").get()).areComputed());
}

TEST_F(NumberWeightsOf, OneByte)
{
    EXPECT_EQ(bytesOf("0"), (Bytes{0x02}));
    EXPECT_EQ(bytesOf("7"), (Bytes{0x09}));
    EXPECT_EQ(bytesOf("73"), (Bytes{0x4B}));
}

TEST_F(NumberWeightsOf, TwoAndThreeBytesInBase254)
{
    EXPECT_EQ(bytesOf("74"), (Bytes{0x4C, 0x02}));
    EXPECT_EQ(bytesOf("328"), (Bytes{0x4D, 0x02}));    // 74 + 254
    EXPECT_EQ(bytesOf("10233"), (Bytes{0x73, 0xFF}));  // 74 + 40 * 254 - 1
    EXPECT_EQ(bytesOf("10234"), (Bytes{0x74, 0x02, 0x02}));
    EXPECT_EQ(bytesOf("1042489"), (Bytes{0x83, 0xFF, 0xFF}));  // 10234 + 16 * 254 * 254 - 1
}

TEST_F(NumberWeightsOf, PairsOfDigits)
{
    EXPECT_EQ(bytesOf("1042490"), (Bytes{0x84, 0x0D, 0x13, 0x3B, 0xBE}));  // 1 04 24 90: 0B + 2 * 1, 4, 24, 90 less 1
    EXPECT_EQ(bytesOf("12000000"), (Bytes{0x84, 0x22}));                   // 12 00 00 00: zeros at the end are left out
    EXPECT_EQ(bytesOf("10000001"), (Bytes{0x84, 0x1F, 0x0B, 0x0B, 0x0C}));
}

TEST_F(NumberWeightsOf, LeadingZerosDoNotCount)
{
    EXPECT_EQ(bytesOf("007"), bytesOf("7"));
    EXPECT_EQ(bytesOf("000"), bytesOf("0"));
    EXPECT_EQ(bytesOf("0000012000000"), bytesOf("12000000"));
}

TEST_F(NumberWeightsOf, DigitsBeyondTheLongestNumberBeginAnother)
{
    const std::string longest(254, '9');
    Bytes both = bytesOf(longest);
    ASSERT_EQ(both.size(), 128U);  // the count of pairs and 127 of them: 42 weights of three bytes, and two bytes
    both.push_back(0);             // what the last weight does not fill
    both.push_back(0x09);
    EXPECT_EQ(bytesOf(longest + "07"), both);
}

TEST(DigitValue, IsThatOfDigitsOfAllScripts)
{
    EXPECT_EQ(vel::nls::digitValue(U'0'), 0);
    EXPECT_EQ(vel::nls::digitValue(U'\u0669'), 9);
    EXPECT_EQ(vel::nls::digitValue(U'\U0001D7CF'), 1);
    EXPECT_EQ(vel::nls::digitValue(U'a'), -1);
    EXPECT_EQ(vel::nls::digitValue(U'\u00B2'), -1);  // a superscript
    EXPECT_EQ(vel::nls::digitValue(U'\u4E09'), -1);  // three, an ideograph
}

}  // namespace
