#include <gtest/gtest.h>

#include <string>

#include "locales.h"
#include "printers.h"
#include "sign.h"
#include "vel/messages/messagetable.h"

// Era, case mapping, comparison, the display name, and the buffers that queries append to.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::MessageTable;
using vel::String;

TEST(LocaleQueries, NoDateHasAnEra)
{
    vel::StringBuffer<8> out;
    out.append(L"x");
    Locale::kUSA.getEra(vel::DateTime(), out);
    vel::DateTime date;
    date.m_nYear = 2026;
    date.m_nMonth = 11;
    date.m_nDay = 21;
    Locale::kUSA.getEra(date, out);
    date.m_nYear = -5;
    Locale::kUSA.getEra(date, out);
    EXPECT_EQ(String(L"x"), out.toString());
}

TEST(LocaleQueries, UpperCaseMappingLeavesALowerCaseText)
{
    vel::StringBuffer<64> out;
    Locale::kUSA.mapString(Locale::kUpperCase, L"stra\u00dfe", 6, out);
    EXPECT_EQ(String(L"stra\u00dfe"), out.toString());
    Locale::kUSA.mapString(Locale::kLowerCase, L"ABC", 2, out);
    EXPECT_EQ(String(L"stra\u00dfe"
                     L"AB"),
              out.toString());
}

TEST(LocaleQueries, MappingNothingAppendsNothing)
{
    vel::StringBuffer<8> out;
    Locale::kUSA.mapString(Locale::kLowerCase, nullptr, 0, out);
    Locale::kUSA.mapString(Locale::kUpperCase, L"abc", 0, out);
    EXPECT_TRUE(out.isEmpty());
}

TEST(LocaleQueries, ALongTextMakesTheBufferGrowToOneLessThanAPowerOfTwo)
{
    const std::wstring text(64, L'x');
    vel::StringBuffer<10> out;
    Locale::kUSA.mapString(Locale::kLowerCase, text.data(), 11, out);
    EXPECT_EQ(63U, out.capacity());
    out.clear();
    Locale::kUSA.mapString(Locale::kLowerCase, text.data(), 64, out);
    EXPECT_EQ(127U, out.capacity());
    EXPECT_EQ(String(text), out.toString());
}

TEST(LocaleQueries, TextsCompareByCodePoint)
{
    const wchar_t* const ascending[] = {L"",  L"A",      L"AA",     L"B",      L"a",
                                        L"b", L"\x00e4", L"\x20ac", L"\xffff", L"\x10000"};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            for (const Locale::CollateOptions option : {Locale::kCollateNoCase, Locale::kCollateCase}) {
                EXPECT_EQ(sign(static_cast<int>(i) - static_cast<int>(j)),
                          sign(Locale::kUSA.collateStrings(option, ascending[i], ascending[j])))
                    << i << " and " << j;
            }
        }
    }
}

TEST(LocaleQueries, SmallAComesAfterCapitalBAlsoWithoutCase)
{
    EXPECT_LT(0, Locale::kUSA.collateStrings(Locale::kCollateNoCase, L"a", L"B"));
    EXPECT_NE(0, Locale::kUSA.collateStrings(Locale::kCollateNoCase, L"a", L"A"));
}

TEST(LocaleMessage, IsTheTablesMessage)
{
    const vel::Handle<MessageTable> table = vel::makeHandle<MessageTable>(L"de");
    table->set(L"kmsgLocaleName_enUS", L"Englisch (Vereinigte Staaten)");
    const vel::GDVariant message = Locale::kUSA.getLocaleMessage(table);
    ASSERT_NE(nullptr, message.asMessage());
    EXPECT_EQ(String(L"Englisch (Vereinigte Staaten)"), message.toString());
}

TEST(LocaleMessage, FollowsReferences)
{
    const vel::Handle<MessageTable> table = vel::makeHandle<MessageTable>(L"de");
    table->set(L"target", L"Englisch");
    table->setReference(L"kmsgLocaleName_enUS", L"target");
    EXPECT_EQ(String(L"Englisch"), Locale::kUSA.getLocaleMessage(table).toString());
}

TEST(LocaleMessage, WithoutTheKeyIsTheDefinitionName)
{
    const vel::Handle<MessageTable> table = vel::makeHandle<MessageTable>(L"de");
    table->set(L"kmsgAnother", L"x");
    const vel::GDVariant message = Locale::kUSA.getLocaleMessage(table);
    ASSERT_NE(nullptr, message.asMessage());
    EXPECT_FALSE(message.asMessage()->isExternal());
    EXPECT_EQ(String(L"en-us"), message.toString());
}

TEST(LocaleMessage, WithoutATableIsTheDefinitionName)
{
    EXPECT_EQ(String(L"en-us"), Locale::kUSA.getLocaleMessage({}).toString());
    EXPECT_EQ(String(), applied("<localeDefinition/>").getLocaleMessage({}).toString());
}

TEST(LocaleMessage, ThatIsNowhereInTheEndIsTheDefinitionName)
{
    const vel::Handle<MessageTable> table = vel::makeHandle<MessageTable>(L"de");
    table->setReference(L"kmsgLocaleName_enUS", L"nowhere");
    EXPECT_EQ(String(L"en-us"), Locale::kUSA.getLocaleMessage(table).toString());
    table->setReference(L"nowhere", L"kmsgLocaleName_enUS");
    EXPECT_EQ(String(L"en-us"), Locale::kUSA.getLocaleMessage(table).toString());
}

}  // namespace
