// The pictures of local currencies against ICU: what they write for 5 and -5 is what ICU's decimal formats write.

#include <gtest/gtest.h>
#include <unicode/decimfmt.h>

#include <memory>

#include "iculocales.h"
#include "packfiles.h"

namespace shipped {
namespace {

// The amount as ICU writes it, without a fraction. An invisible symbol (pt-cv) is the currency's code in the pack.
std::string icuText(const std::string& definition, UNumberFormatStyle style, int amount)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(icuLocale(definition), style, status));
    EXPECT_TRUE(U_SUCCESS(status)) << definition;
    format->setGroupingUsed(false);
    format->setMaximumFractionDigits(0);
    icu::UnicodeString text;
    format->format(amount, text);
    text.findAndReplace(u"\u200B", icu::UnicodeString(format->getCurrency()));
    return plainText(text);
}

std::string render(const std::string& picture, const std::string& symbol)
{
    std::string text;
    for (const char character : picture) {
        text += character == '$' ? symbol : character == '#' ? "5" : std::string(1, character);
    }
    return plainText(icu::UnicodeString::fromUTF8(text));
}

class LocalPictures : public testing::Test
{
protected:
    template <typename Check>
    void forEach(Check check)
    {
        size_t count = 0;
        for (const Element& currency : currencies()) {
            if (currency.attribute("type") == "local") {
                ASSERT_FALSE(currency.children.empty()) << currency.attribute("tag");
                check(currency, currency.attribute("locale"));
                ++count;
            }
        }
        EXPECT_EQ(count, loadedLocales().size());
    }
};

TEST_F(LocalPictures, writePositiveAmountsAsIcuDoes)
{
    forEach([](const Element& currency, const std::string& locale) {
        const std::string format = currency.attribute("format");
        EXPECT_EQ(render(format.empty() ? "$#" : format, currency.attribute("symbol")),
                  icuText(locale, UNUM_CURRENCY, 5))
            << locale;
    });
}

TEST_F(LocalPictures, beginWithTheLocalesOwnNegativeOne)
{
    forEach([](const Element& currency, const std::string& locale) {
        EXPECT_EQ(render(currency.children.front().attribute("format"), currency.attribute("symbol")),
                  icuText(locale, UNUM_CURRENCY, -5))
            << locale;
    });
}

// One negative picture means that accounts are written in the same way.
TEST_F(LocalPictures, endWithTheAccountingOne)
{
    forEach([](const Element& currency, const std::string& locale) {
        EXPECT_EQ(render(currency.children.back().attribute("format"), currency.attribute("symbol")),
                  icuText(locale, UNUM_CURRENCY_ACCOUNTING, -5))
            << locale;
    });
}

}  // namespace
}  // namespace shipped
