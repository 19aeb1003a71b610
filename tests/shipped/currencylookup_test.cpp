// The pack's currencies through the library: every record is found, with captions in the reader's language.

#include <gtest/gtest.h>

#include "catalogues.h"
#include "packfiles.h"
#include "vel/messages/messagefilesregistry.h"
#include "vel/messages/messageformatter.h"
#include "webi18n/currencylookup.h"

namespace shipped {
namespace {

vel::String wide(const std::string& text)
{
    return vel::stringFromUtf8(text).value();
}

const vel::CurrencyLookup& lookup()
{
    static const vel::CurrencyLookup loaded(wide(packFile("currencies.xml")));
    return loaded;
}

vel::Handle<const vel::MessageTable> messages(const vel::String& language)
{
    return vel::MessageFilesRegistry::getInstance().loadTable(wide(packFile("messages")), language);
}

vel::String shown(const vel::Handle<const vel::MessageTable>& table, const vel::GDVariant& value)
{
    const vel::Message* message = value.asMessage();
    return message == nullptr ? value.toString() : vel::MessageFormatter(table).format(*message);
}

vel::String caption(const vel::String& tag, const vel::String& language)
{
    const auto table = messages(language);
    vel::GDVariant out;
    lookup().lookupCurrencyTag(tag)->getResolvedCurrencyDisplayMessage(table, out);
    return shown(table, out);
}

vel::String name(const vel::String& tag, const vel::String& language)
{
    const auto table = messages(language);
    vel::GDVariant out;
    lookup().lookupCurrencyTag(tag)->getResolvedCurrencyDisplayName(table, out);
    return shown(table, out);
}

// Captions of local currencies name locales of the process's catalogue.
class CurrencyCaptions : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        const auto config = testsupport::allowing(L"", wide(packFile("localelists.xml")));
        vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(*config,
                                                                            wide(packFile("localedefinitions.xml")));
    }
};

TEST(CurrencyLookupOfThePack, findsEveryRecordByItsTag)
{
    ASSERT_EQ(lookup().getCurrencyList().size(), currencies().size());
    for (const Element& element : currencies()) {
        const auto currency = lookup().lookupCurrencyTag(wide(element.attribute("tag")));
        ASSERT_FALSE(currency.isNull()) << element.attribute("tag");
        const bool isLocal = element.attribute("type") == "local";
        EXPECT_EQ(currency->getType(), isLocal ? vel::Currency::kLocal : vel::Currency::kInternational);
        EXPECT_EQ(currency->getCurrencySymbol(), wide(element.attribute("symbol")));
        EXPECT_EQ(currency->getLocaleDefinitionName(), wide(element.attribute("locale")));
        const std::string digits = element.attribute("digits");
        EXPECT_EQ(currency->getDefaultDigits(), digits.empty() ? -1 : std::stoi(digits));
        EXPECT_EQ(currency->displayAsChoice(), element.attribute("display") != "false");
        for (const Element& negative : element.children) {
            EXPECT_EQ(currency->getNegativeFormats().at(wide(negative.attribute("tag"))).getFormat(),
                      wide(negative.attribute("format")));
        }
        EXPECT_EQ(currency->getPreferredNegativeTag(),
                  isLocal ? wide(element.children.at(0).attribute("tag")) : vel::String(L"minus"));
        EXPECT_EQ(currency->getNegativeFormats().count(L"minus") + currency->getNegativeFormats().count(L"parens"), 2u);
    }
}

TEST(CurrencyLookupOfThePack, leadsASymbolToTheCurrencyThatItIsBestKnownFor)
{
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"$", L"loc:en-us"},  {L"\u20AC", L"loc:de-de"}, {L"\u00A3", L"loc:en-gb"}, {L"\u20B9", L"loc:hi-in"},
        {L"R$", L"loc:pt-br"}, {L"CHF", L"CHF"},          {L"EUR", L"EUR"},
    };
    for (const auto& [symbol, tag] : cases) {
        EXPECT_EQ(lookup().lookupCurrencySymbol(symbol)->getTag(), tag);
    }
}

TEST(CurrencyLookupOfThePack, leadsEveryCodeToItsInternationalCurrency)
{
    for (const Element& element : currencies()) {
        if (element.attribute("type") == "international") {
            const vel::String code = wide(element.attribute("tag"));
            EXPECT_EQ(lookup().lookupCurrencySymbol(code)->getTag(), code);
        }
    }
}

TEST_F(CurrencyCaptions, ofLocalCurrenciesAreSymbolAndLocale)
{
    EXPECT_EQ(caption(L"loc:ja-jp", L"de"), L"\uFFE5 (Japanisch (Japan))");
    EXPECT_EQ(caption(L"loc:en-us", L"fr"), L"$ (anglais (\u00C9tats-Unis))");
    EXPECT_EQ(caption(L"loc:de-de", L"en"), L"\u20AC (German (Germany))");
    EXPECT_EQ(caption(L"loc:fr-ca", L"es"), L"$ (franc\u00E9s (Canad\u00E1))");
    EXPECT_EQ(name(L"loc:ja-jp", L"de"), L"\uFFE5 (Japanisch (Japan))");
}

TEST_F(CurrencyCaptions, ofInternationalCurrenciesAreNameAndCode)
{
    EXPECT_EQ(caption(L"EUR", L"de"), L"Euro (EUR)");
    EXPECT_EQ(caption(L"JPY", L"de"), L"Japanischer Yen (JPY)");
    EXPECT_EQ(caption(L"CHF", L"en"), L"Swiss Franc (CHF)");
    EXPECT_EQ(caption(L"USD", L"es"), L"d\u00F3lar estadounidense (USD)");
    EXPECT_EQ(name(L"CHF", L"en"), L"Swiss Franc");
    EXPECT_EQ(name(L"EUR", L"ja"), L"\u30E6\u30FC\u30ED");
}

TEST_F(CurrencyCaptions, areNeverBareSymbolsOrKeys)
{
    const auto german = messages(L"de");
    for (const auto& currency : lookup().getCurrencyList()) {
        vel::GDVariant out;
        currency->getResolvedCurrencyDisplayMessage(german, out);
        const vel::String text = shown(german, out);
        EXPECT_EQ(text.view().find(L"kmsg"), std::wstring_view::npos) << currency->getTag().c_str();
        EXPECT_NE(text, currency->getCurrencySymbol());
        EXPECT_NE(text.view().find(currency->getCurrencySymbol().view()), std::wstring_view::npos);
    }
}

}  // namespace
}  // namespace shipped
