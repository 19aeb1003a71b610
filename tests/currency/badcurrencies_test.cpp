#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "currencies.h"
#include "vel/xml/xmlexception.h"

// Files with mistakes of every kind, cut off, corrupted and huge: each loads or throws XmlException, and after an
// exception the catalogue is as before.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::CurrencyLookup;
using vel::Handle;
using vel::String;

const std::string kFile =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Currencies><!-- x --><Currency tag=\"EUR\" type=\"international\" "
    "symbol=\"\xE2\x82\xAC\" digits=\"2\" displayMessage=\"a\" display=\"true\"><negative tag=\"red\" "
    "format=\"[#]\"/></Currency><Currency tag='l' type='LOCAL' locale='de-de' displayname='&#228;&amp;'/>"
    "</Currencies>";

class BadCurrencies : public testing::Test
{
protected:
    void SetUp() override
    {
        m_tLookup.loadCurrencies(m_tFile.write(currenciesFile(currency("old", "local", "symbol=\"o\""))));
        m_sBefore = outline(m_tLookup);
    }

    /// Whether the bytes load into a catalogue that holds something; any exception but XmlException is the test's
    /// failure. The catalogue is as at first afterwards.
    bool loads(const std::string& bytes)
    {
        const String path = m_tFile.write(bytes);
        try {
            CurrencyLookup another(path);
            const std::size_t before = m_tLookup.getCurrencyList().size();
            m_tLookup.loadCurrencies(path);
            EXPECT_EQ(before + another.getCurrencyList().size(), m_tLookup.getCurrencyList().size());
            m_sBefore = outline(m_tLookup);
            return true;
        } catch (const vel::XmlException& exception) {
            EXPECT_EQ(path, exception.file());
            EXPECT_THROW(m_tLookup.loadCurrencies(path), vel::XmlException);
            EXPECT_EQ(m_sBefore, outline(m_tLookup));
            return false;
        }
    }
    void restart()
    {
        std::destroy_at(&m_tLookup);
        std::construct_at(&m_tLookup);
        SetUp();
    }

    MemoryFile m_tFile;
    CurrencyLookup m_tLookup;
    String m_sBefore;
};

TEST_F(BadCurrencies, TheWholeFileLoads)
{
    EXPECT_TRUE(loads(kFile));
    EXPECT_EQ(3U, m_tLookup.getCurrencyList().size());
}

TEST_F(BadCurrencies, CutOffAtEveryByteItThrows)
{
    for (std::size_t length = 0; length < kFile.size(); ++length) {
        ASSERT_FALSE(loads(kFile.substr(0, length))) << length;
        ASSERT_FALSE(HasFailure()) << length;
    }
}

TEST_F(BadCurrencies, CutOffAtEveryByteOfUtf16ItThrows)
{
    const std::string elements = currenciesFile(currency("t", "local", "symbol=\"s\"", negative("red", "[$#]")));
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char each : elements) {
        little.append({each, '\0'});
        big.append({'\0', each});
    }
    for (const std::string& file : {little, big}) {
        for (std::size_t length = 0; length < file.size(); ++length) {
            ASSERT_FALSE(loads(file.substr(0, length))) << length;
            ASSERT_FALSE(HasFailure()) << length;
        }
        EXPECT_TRUE(loads(file));
    }
}

TEST_F(BadCurrencies, WithAnyByteCorruptedItLoadsOrThrows)
{
    // Bytes that mean something to XML, to UTF-8 or to the reader, at every place; all 255 others at every eleventh.
    const std::string telling("\0\t\n\"&'-/0<=>A[]a|\x7F\x80\xC3\xE2\xED\xF4\xFE\xFF", 25);
    std::size_t loaded = 0;
    std::size_t refused = 0;
    for (std::size_t place = 0; place < kFile.size(); ++place) {
        std::string bytes = kFile;
        const std::size_t variants = place % 11 == 0 ? 256 : telling.size();
        for (std::size_t variant = 0; variant < variants; ++variant) {
            bytes[place] = variants == 256 ? static_cast<char>(variant) : telling[variant];
            if (bytes[place] != kFile[place]) {
                ++(loads(bytes) ? loaded : refused);
                ASSERT_FALSE(HasFailure()) << "byte " << place << ", variant " << variant;
            }
        }
        restart();
    }
    EXPECT_LT(100U, loaded);
    EXPECT_LT(100U, refused);
}

constexpr std::array<const char*, 12> kAttributes = {"tag",         "type",    "symbol",         "format",
                                                     "digits",      "locale",  "displayMessage", "displaymessage",
                                                     "displayName", "display", "placeholder",    "thousandsSeparator"};

/// An element whose attributes all have the value, but for a tag and a type that count.
std::string elementWith(const std::string& attribute, const std::string& value)
{
    std::string element = "<Currency " + attribute + "=\"" + value + "\"";
    element += attribute == "tag" ? "" : " tag=\"t\"";
    element += attribute == "type" ? "" : " type=\"local\"";
    return element + "/>";
}

TEST_F(BadCurrencies, AMegabyteInAnyAttributeIsTakenAsItIs)
{
    const std::string megabyte(1 << 20, 'm');
    const String wide(std::wstring(1 << 20, L'm'));
    for (const char* attribute : kAttributes) {
        const CurrencyLookup lookup = loaded(elementWith(attribute, megabyte));
        // A megabyte is no type; everything else is.
        ASSERT_EQ(attribute == std::string("type") ? 0U : 1U, lookup.getCurrencyList().size()) << attribute;
    }
    EXPECT_FALSE(loaded(elementWith("tag", megabyte)).lookupCurrencyTag(wide).isNull());
    EXPECT_FALSE(loaded(elementWith("symbol", megabyte)).lookupCurrencySymbol(wide).isNull());
    EXPECT_EQ(wide, recordOf(elementWith("format", megabyte))->getFormat());
    EXPECT_EQ(wide, recordOf(elementWith("locale", megabyte))->getLocaleDefinitionName());
    EXPECT_EQ(0, recordOf(elementWith("digits", megabyte))->getDefaultDigits());
    EXPECT_TRUE(recordOf(elementWith("display", megabyte))->displayAsChoice());
    EXPECT_FALSE(recordOf(elementWith("placeholder", megabyte))->isPlaceholder());
    EXPECT_TRUE(recordOf(elementWith("thousandsSeparator", megabyte))->useThousandsSeparator());
}

TEST_F(BadCurrencies, AMegabyteOfDigitsIsNoNumberThatARecordCanHold)
{
    EXPECT_EQ(0, recordOf(elementWith("digits", std::string(1 << 20, '9')))->getDefaultDigits());
    EXPECT_EQ(7, recordOf(elementWith("digits", std::string(1 << 20, '0') + "7"))->getDefaultDigits());
}

TEST_F(BadCurrencies, MegabytesInANegativeFormatAreTakenAsTheyAre)
{
    const std::string megabyte(1 << 20, 'm');
    const Handle<const Currency> record =
        recordOf(currency("t", "local", "", negative(megabyte, "x") + negative("y", megabyte)));
    EXPECT_EQ(4U, record->getNegativeFormats().size());
    EXPECT_EQ(1U << 20, record->getPreferredNegativeTag().length());
    EXPECT_EQ(1U << 20, record->getNegativeFormats().at(L"y").getFormat().length());
}

TEST_F(BadCurrencies, EveryAttributeButTagAndTypeMayBeEmpty)
{
    for (const char* attribute : kAttributes) {
        const bool required = attribute == std::string("tag") || attribute == std::string("type");
        const CurrencyLookup lookup = loaded(elementWith(attribute, ""));
        ASSERT_EQ(required ? 0U : 1U, lookup.getCurrencyList().size()) << attribute;
        if (!required) {
            EXPECT_EQ(outline(*recordOf(currency("t", "local"))), outline(*lookup.getCurrencyList().front()))
                << attribute;
        }
    }
}

TEST_F(BadCurrencies, AnAttributeGivenTwiceIsRefused)
{
    for (const char* attribute : kAttributes) {
        const std::string twice = std::string(attribute) + "=\"a\" " + attribute + "=\"b\"";
        EXPECT_FALSE(loads(currenciesFile("<Currency " + twice + "/>"))) << attribute;
    }
}

TEST_F(BadCurrencies, AHundredThousandCurrenciesAreAllFound)
{
    constexpr std::size_t kCount = 100000;
    std::string elements;
    for (std::size_t i = 0; i < kCount; ++i) {
        elements += "<Currency tag=\"t" + std::to_string(i) + "\" type=\"local\" symbol=\"s" +
                    std::to_string(i % 1000) + "\"/>";
    }
    const CurrencyLookup lookup = loaded(elements);
    ASSERT_EQ(kCount, lookup.getCurrencyList().size());
    ASSERT_EQ(kCount, lookup.getCurrencyMap().size());
    for (const Handle<const Currency>& each : lookup.getCurrencyList()) {
        ASSERT_TRUE(each == lookup.lookupCurrencyTag(each->getTag()));
    }
    EXPECT_EQ(String(L"t99007"), lookup.lookupCurrencySymbol(L"s7")->getTag());
    EXPECT_TRUE(lookup.lookupCurrencyTag(L"t100000").isNull());
}

TEST_F(BadCurrencies, AHundredThousandOfOneTagAreListedAndTheLastIsFound)
{
    std::string elements;
    for (int i = 0; i < 100000; ++i) {
        elements += "<Currency tag=\"t\" type=\"local\"/>";
    }
    const CurrencyLookup lookup = loaded(elements);
    EXPECT_EQ(100000U, lookup.getCurrencyList().size());
    EXPECT_EQ(1U, lookup.getCurrencyMap().size());
    EXPECT_TRUE(lookup.getCurrencyList().back() == lookup.lookupCurrencyTag(L"t"));
    EXPECT_TRUE(lookup.getCurrencyList().back() == lookup.lookupCurrencySymbol(L""));
}

TEST_F(BadCurrencies, AHundredThousandNegativeFormats)
{
    std::string children;
    for (int i = 0; i < 100000; ++i) {
        children += negative("n" + std::to_string(i), "x");
    }
    const Handle<const Currency> record = recordOf(currency("t", "local", "", children));
    EXPECT_EQ(100002U, record->getNegativeFormats().size());
    EXPECT_EQ(String(L"n0"), record->getPreferredNegativeTag());
}

}  // namespace
