#include <gtest/gtest.h>

#include "catalogues.h"
#include "currencies.h"
#include "vel/messages/messageformatter.h"

// Captions and names for people: a currency's own, its symbol, or the heading of a local one. The process's catalogue
// has "de-de" with a name in the messages, "ja-jp" without one, and "fr-fr" that is not allowed.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::GDVariant;
using vel::Handle;
using vel::LocaleTagLookup;
using vel::Message;
using vel::MessageFormatter;
using vel::MessageTable;
using vel::String;

constexpr const wchar_t* kHeading = L"kmsgCurrencyFormatLocaleCurrencyHeading";

class CurrencyCaptions : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        const MemoryFile file;
        const std::string definitions = definition("de-de", property("localeDisplayMessage", "kmsgLocaleName_deDE")) +
                                        definition("ja-jp", "") + definition("fr-fr", "");
        LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(*allowing(L"de-de,ja-jp"),
                                                                       file.write(definitionsFile(definitions)));
    }

    void SetUp() override
    {
        m_hTable->set(kHeading, L"%1 (%2)");
        m_hTable->set(L"kmsgLocaleName_deDE", L"Deutsch (Deutschland)");
        m_hTable->set(L"kmsgEuro", L"Euro");
        m_hTable->set(L"kmsgName", L"Euro der EU");
        m_hTable->set(L"kmsgEmpty", L"");
        m_hTable->setReference(L"kmsgAlias", L"kmsgEuro");
        m_hTable->setReference(L"kmsgCircle", L"kmsgCircle");
    }

    static GDVariant captionOf(const Currency& record, const Handle<const MessageTable>& table)
    {
        GDVariant out = GDVariant::number(7);
        record.getResolvedCurrencyDisplayMessage(table, out);
        return out;
    }
    static GDVariant nameOf(const Currency& record, const Handle<const MessageTable>& table)
    {
        GDVariant out = GDVariant::number(7);
        record.getResolvedCurrencyDisplayName(table, out);
        return out;
    }
    GDVariant caption(const std::string& type, const std::string& attributes) const
    {
        return captionOf(*recordOf(currency("t", type, "symbol=\"S\" " + attributes)), m_hTable);
    }
    GDVariant name(const std::string& type, const std::string& attributes) const
    {
        return nameOf(*recordOf(currency("t", type, "symbol=\"S\" " + attributes)), m_hTable);
    }
    String shown(const GDVariant& value) const
    {
        return value.asMessage() == nullptr ? String(L"(no message)")
                                            : MessageFormatter(m_hTable).format(*value.asMessage());
    }
    static void expectText(const wchar_t* text, const GDVariant& value)
    {
        ASSERT_NE(nullptr, value.asMessage());
        EXPECT_TRUE(*value.asMessage() == Message::text(text)) << testing::PrintToString(value.toString());
        EXPECT_EQ(vel::kTypeString, value.primitiveType());
    }
    static void expectHeading(const wchar_t* symbol, const wchar_t* locale, const GDVariant& value)
    {
        ASSERT_NE(nullptr, value.asMessage());
        EXPECT_TRUE(*value.asMessage() ==
                    Message::external(kHeading).insert(1, Message::text(symbol)).insert(2, Message::text(locale)))
            << testing::PrintToString(value.toString());
        EXPECT_EQ(vel::kTypeNonPrimitive, value.primitiveType());
    }

    Handle<MessageTable> m_hTable = vel::makeHandle<MessageTable>(L"de");
};

TEST_F(CurrencyCaptions, AnOwnMessageIsResolved)
{
    for (const char* type : {"local", "international"}) {
        expectText(L"Euro", caption(type, "displayMessage=\"kmsgEuro\" locale=\"de-de\""));
        expectText(L"Euro", caption(type, "displaymessage=\"kmsgEuro\" locale=\"de-de\""));
        expectText(L"Euro", caption(type, "displayMessage=\"kmsgAlias\""));
    }
}

TEST_F(CurrencyCaptions, AnOwnMessageWithAnEmptyTextIsACaptionOfItsOwn)
{
    expectText(L"", caption("international", "displayMessage=\"kmsgEmpty\""));
}

TEST_F(CurrencyCaptions, AnOwnMessageThatTheTableLacksIsAsGoodAsNone)
{
    for (const char* key : {"kmsgUnknown", "kmsgCircle", " "}) {
        const std::string attribute = std::string("locale=\"de-de\" displayMessage=\"") + key + "\"";
        expectText(L"S", caption("international", attribute));
        expectHeading(L"S", L"Deutsch (Deutschland)", caption("local", attribute));
    }
}

TEST_F(CurrencyCaptions, AnInternationalOneIsItsSymbolAloneWhateverItsLocale)
{
    expectText(L"S", caption("international", ""));
    for (const char* locale : {"de-de", "nowhere", ""}) {
        expectText(L"S", caption("international", std::string("locale=\"") + locale + "\""));
        expectText(L"S", name("international", std::string("locale=\"") + locale + "\""));
    }
    expectText(L"", captionOf(*recordOf(currency("t", "international")), m_hTable));
}

TEST_F(CurrencyCaptions, ALocalOneOfAKnownLocaleIsTheHeadingOfSymbolAndLocale)
{
    const GDVariant heading = caption("local", "locale=\"de-de\"");
    expectHeading(L"S", L"Deutsch (Deutschland)", heading);
    EXPECT_EQ(String(L"S (Deutsch (Deutschland))"), shown(heading));
    // Locales are found without regard to case.
    expectHeading(L"S", L"Deutsch (Deutschland)", caption("local", "locale=\"DE-de\""));
    expectHeading(L"", L"ja-jp", captionOf(*recordOf(currency("t", "local", "locale=\"ja-jp\"")), m_hTable));
}

TEST_F(CurrencyCaptions, ALocaleWithoutAMessageIsNamedByItsDefinition)
{
    expectHeading(L"S", L"ja-jp", caption("local", "locale=\"ja-jp\""));
    m_hTable = vel::makeHandle<MessageTable>(L"xx");
    expectHeading(L"S", L"de-de", caption("local", "locale=\"de-de\""));
}

TEST_F(CurrencyCaptions, ALocalOneOfAnUnknownOrNotAllowedLocaleIsItsSymbolAlone)
{
    expectText(L"S", caption("local", "locale=\"xx-yy\""));
    expectText(L"S", caption("local", "locale=\"fr-fr\""));
    expectText(L"S", caption("local", "locale=\" de-de\""));
}

TEST_F(CurrencyCaptions, ALocalOneWithoutALocaleIsItsSymbolAlone)
{
    expectText(L"S", caption("local", ""));
    expectText(L"S", caption("local", "locale=\"\""));
}

TEST_F(CurrencyCaptions, ACloneIsCaptionedByItsOwnLocale)
{
    const Handle<Currency> clone(recordOf(currency("t", "local", "symbol=\"S\" locale=\"de-de\""))->clone());
    clone->setLocaleDefinitionName(L"ja-jp");
    expectHeading(L"S", L"ja-jp", captionOf(*clone, m_hTable));
}

TEST_F(CurrencyCaptions, ACaptionThatWasAskedForBeforeFollowsItsTable)
{
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"S\" locale=\"de-de\""));
    const Handle<MessageTable> english = vel::makeHandle<MessageTable>(L"en");
    english->set(L"kmsgLocaleName_deDE", L"German (Germany)");
    for (int i = 0; i < 2; ++i) {
        expectHeading(L"S", L"Deutsch (Deutschland)", captionOf(*record, m_hTable));
        expectHeading(L"S", L"German (Germany)", captionOf(*record, english));
    }
    m_hTable->set(L"kmsgLocaleName_deDE", L"Deutsch");
    expectHeading(L"S", L"Deutsch", captionOf(*record, m_hTable));
    expectHeading(L"S", L"German (Germany)", captionOf(*record, english));
    m_hTable->setReference(L"kmsgLocaleName_deDE", L"kmsgEuro");
    expectHeading(L"S", L"Euro", captionOf(*record, m_hTable));
}

TEST_F(CurrencyCaptions, ACaptionThatWasAskedForBeforeFollowsTheAllowedLocales)
{
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"S\" locale=\"de-de\""));
    LocaleTagLookup& locales = LocaleTagLookup::getInstanceForLoading();
    for (int i = 0; i < 2; ++i) {
        expectHeading(L"S", L"Deutsch (Deutschland)", captionOf(*record, m_hTable));
        locales.loadConfig(*allowing(L"ja-jp"), vel::kConfigReload);
        expectText(L"S", captionOf(*record, m_hTable));
        locales.loadConfig(*allowing(L"de-de,ja-jp"), vel::kConfigReload);
    }
}

TEST_F(CurrencyCaptions, ACloneOfARecordThatWasAskedBeforeIsCaptionedByItsOwnLocale)
{
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"S\" locale=\"de-de\""));
    expectHeading(L"S", L"Deutsch (Deutschland)", captionOf(*record, m_hTable));
    const Handle<Currency> clone(record->clone());
    expectHeading(L"S", L"Deutsch (Deutschland)", captionOf(*clone, m_hTable));
    clone->setLocaleDefinitionName(L"ja-jp");
    expectHeading(L"S", L"ja-jp", captionOf(*clone, m_hTable));
    expectHeading(L"S", L"Deutsch (Deutschland)", captionOf(*record, m_hTable));
}

TEST_F(CurrencyCaptions, OfThousandsOfRecordsEachHasItsOwn)
{
    std::string elements;
    for (int i = 0; i < 3000; ++i) {
        const std::string locale = i % 3 == 0 ? "ja-jp" : i % 3 == 1 ? "de-de" : "xx-yy";
        elements += currency("t" + std::to_string(i), "local",
                             "symbol=\"" + std::to_string(i) + "\" locale=\"" + locale + "\"");
    }
    const vel::CurrencyLookup lookup = loaded(elements);
    for (int time = 0; time < 2; ++time) {
        for (int i = 0; i < 3000; ++i) {
            const std::wstring symbol = std::to_wstring(i);
            const GDVariant caption = captionOf(*lookup.getCurrencyList()[static_cast<std::size_t>(i)], m_hTable);
            if (i % 3 == 2) {
                expectText(symbol.c_str(), caption);
            } else {
                expectHeading(symbol.c_str(), i % 3 == 0 ? L"ja-jp" : L"Deutsch (Deutschland)", caption);
            }
        }
    }
}

TEST_F(CurrencyCaptions, WithoutATableAnOwnMessageStaysAReference)
{
    const Handle<const Currency> record =
        recordOf(currency("t", "local", "displayMessage=\"kmsgEuro\" displayName=\"kmsgName\" locale=\"de-de\""));
    const GDVariant own = captionOf(*record, {});
    ASSERT_NE(nullptr, own.asMessage());
    EXPECT_TRUE(*own.asMessage() == Message::external(L"kmsgEuro"));
    const GDVariant ownName = nameOf(*record, {});
    ASSERT_NE(nullptr, ownName.asMessage());
    EXPECT_TRUE(*ownName.asMessage() == Message::external(L"kmsgName"));
}

TEST_F(CurrencyCaptions, WithoutATableALocaleIsNamedByItsDefinition)
{
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"S\" locale=\"de-de\""));
    expectHeading(L"S", L"de-de", captionOf(*record, {}));
    expectHeading(L"S", L"de-de", nameOf(*record, {}));
    EXPECT_EQ(String(L"kmsgCurrencyFormatLocaleCurrencyHeading(S, de-de)"), captionOf(*record, {}).toString());
    expectText(L"S", captionOf(*recordOf(currency("t", "international", "symbol=\"S\"")), {}));
}

TEST_F(CurrencyCaptions, ANameThatIsSetIsReturnedAsItIsWithoutLookingAtTheCaption)
{
    const auto expectName = [this](const char* attributes, const wchar_t* key, const wchar_t* text) {
        for (const char* type : {"local", "international"}) {
            const GDVariant value = name(type, attributes);
            ASSERT_NE(nullptr, value.asMessage());
            EXPECT_TRUE(*value.asMessage() == Message::external(key)) << attributes;
            EXPECT_EQ(vel::kTypeNonPrimitive, value.primitiveType());
            EXPECT_EQ(String(text), shown(value));
        }
    };
    expectName("displayName=\"kmsgName\" displayMessage=\"kmsgEuro\" locale=\"de-de\"", L"kmsgName", L"Euro der EU");
    expectName("displayName=\"kmsgName\"", L"kmsgName", L"Euro der EU");
    expectName("displayName=\"kmsgAlias\"", L"kmsgAlias", L"Euro");
    expectName("displayName=\"kmsgEmpty\"", L"kmsgEmpty", L"");
}

TEST_F(CurrencyCaptions, APerCentSignOfAMessageIsShownOnce)
{
    m_hTable->set(L"kmsgEuro", L"100%% Euro");
    m_hTable->set(L"kmsgLocaleName_deDE", L"Deutsch, 50%%");
    const GDVariant own = caption("local", "displayMessage=\"kmsgAlias\"");
    EXPECT_EQ(String(L"100% Euro"), own.toString());
    EXPECT_EQ(String(L"100% Euro"), shown(own));
    EXPECT_EQ(String(L"100% Euro"), shown(name("local", "displayName=\"kmsgEuro\"")));
    EXPECT_EQ(String(L"S (Deutsch, 50%)"), shown(caption("local", "locale=\"de-de\"")));
}

TEST_F(CurrencyCaptions, WhatWasAskedForDoesNotKeepItsTable)
{
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"S\" locale=\"de-de\""));
    for (int i = 0; i < 20; ++i) {
        const Handle<MessageTable> table = vel::makeHandle<MessageTable>(L"xx");
        table->set(L"kmsgLocaleName_deDE", String(std::to_wstring(i)));
        expectHeading(L"S", std::to_wstring(i).c_str(), captionOf(*record, table));
        expectHeading(L"S", std::to_wstring(i).c_str(), captionOf(*record, table));
        EXPECT_EQ(1U, table->referenceCount());
    }
}

TEST_F(CurrencyCaptions, WithoutANameTheCaptionIsTheName)
{
    expectText(L"Euro", name("local", "displayMessage=\"kmsgEuro\""));
    expectHeading(L"S", L"Deutsch (Deutschland)", name("local", "locale=\"de-de\""));
    expectText(L"S", name("local", "locale=\"xx-yy\""));
    expectText(L"S", name("international", ""));
}

TEST_F(CurrencyCaptions, ANameThatTheTableLacksIsAsGoodAsNone)
{
    expectText(L"Euro", name("local", "displayName=\"kmsgUnknown\" displayMessage=\"kmsgEuro\""));
    expectHeading(L"S", L"Deutsch (Deutschland)", name("local", "displayName=\"kmsgUnknown\" locale=\"de-de\""));
    expectText(L"S", name("international", "displayName=\"kmsgCircle\" displayMessage=\"kmsgUnknown\""));
}

struct HeadingRow
{
    const wchar_t* m_pPattern;
    const wchar_t* m_pShown;
};

TEST_F(CurrencyCaptions, HeadingsWithInsertsMissingRepeatedOrOutOfRangeGiveStatedTexts)
{
    const HeadingRow rows[] = {{L"%1 (%2)", L"S (ja-jp)"},
                               {L"%2: %1", L"ja-jp: S"},
                               {L"<velm:param insert=\"2\"/> <velm:param insert=\"1\"/>", L"ja-jp S"},
                               // Missing: the insert is dropped.
                               {L"%1", L"S"},
                               {L"Local", L"Local"},
                               {L"", L""},
                               // Repeated: filled in each time.
                               {L"%1%1 %2 %1", L"SS ja-jp S"},
                               // Out of range: as written. At most four digits make an insert.
                               {L"%0 %1 %3", L"%0 S %3"},
                               {L"<velm:param insert=\"9\"/>%1", L"<velm:param insert=\"9\"/>S"},
                               {L"%10000", L"%10000"},
                               {L"%0001", L"S"},
                               {L"%00001", L"%00001"},
                               {L"%99999999999999999999", L"%99999999999999999999"},
                               {L"<velm:param insert=\"10000\"/>", L"<velm:param insert=\"10000\"/>"},
                               {L"<velm:param insert=\"\"/><velm:param insert=\"x\"/>",
                                L"<velm:param insert=\"\"/><velm:param insert=\"x\"/>"},
                               {L"<velm:param insert=\"1", L"<velm:param insert=\"1"},
                               // Per-cent signs.
                               {L"100%% %1", L"100% S"},
                               {L"%%1 %", L"%1 %"},
                               {L"%%%1%", L"%S%"},
                               {L"%x%-1", L"%x%-1"}};
    for (const HeadingRow& row : rows) {
        m_hTable->set(kHeading, row.m_pPattern);
        EXPECT_EQ(String(row.m_pShown), shown(caption("local", "locale=\"ja-jp\"")))
            << vel::toUtf8Lossy(row.m_pPattern);
    }
}

TEST_F(CurrencyCaptions, ASymbolThatLooksLikeAnInsertIsShownAsItIs)
{
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"%2%%\" locale=\"ja-jp\""));
    EXPECT_EQ(String(L"%2%% (ja-jp)"), shown(captionOf(*record, m_hTable)));
    expectText(L"%1", captionOf(*recordOf(currency("t", "international", "symbol=\"%1\"")), m_hTable));
}

TEST_F(CurrencyCaptions, AHeadingThatTheTableLacksReadsAsItsKeyWithBothInserts)
{
    const Handle<const MessageTable> empty = vel::makeHandle<MessageTable>(L"xx");
    const Handle<const Currency> record = recordOf(currency("t", "local", "symbol=\"S\" locale=\"ja-jp\""));
    EXPECT_EQ(String(L"kmsgCurrencyFormatLocaleCurrencyHeading(S, ja-jp)"),
              MessageFormatter(empty).format(*captionOf(*record, empty).asMessage()));
}

TEST_F(CurrencyCaptions, AHeadingIsResolvedAsAnyOtherMessage)
{
    const GDVariant resolved = m_hTable->resolveReferences(caption("local", "locale=\"de-de\""));
    ASSERT_NE(nullptr, resolved.asMessage());
    EXPECT_FALSE(resolved.asMessage()->isExternal());
    EXPECT_EQ(String(L"S (Deutsch (Deutschland))"), resolved.toString());
}

}  // namespace
