#include "vel/core/message.h"

#include <gtest/gtest.h>

#include <utility>

#include "printers.h"
#include "vel/core/texthash.h"

namespace {

using vel::Message;
using vel::String;

TEST(Message, RowsOfTheHeader)
{
    EXPECT_EQ(Message::text(L"Loading '%1'.").insert(1, L"a.xml").toString(), L"Loading 'a.xml'.");
    EXPECT_EQ(Message::text(L"50%% of %2").insert(1, L"a").toString(), L"50% of %2");
    EXPECT_EQ(Message::text(L"50%% of %2").toString(), L"50%% of %2");
    EXPECT_EQ(Message::pattern(L"50%% of %2").toString(), L"50% of %2");
    EXPECT_EQ(Message::external(L"kmsgInvalidLocaleTag").insert(1, L"xx").toString(), L"kmsgInvalidLocaleTag(xx)");
}

struct Row
{
    const wchar_t* m_pPattern;
    const wchar_t* m_pExpected;
};

// Insert 1 is "one", 12 is "twelve", 1234 is "many", 0 is "zero".
const Row kRows[] = {
    {L"", L""},
    {L"plain", L"plain"},
    {L"%1", L"one"},
    {L"%1%1", L"oneone"},
    {L"%12", L"twelve"},
    {L"%1 2", L"one 2"},
    {L"%0", L"zero"},
    {L"%01", L"one"},
    {L"%12345", L"many5"},  // at most four digits are read
    {L"%3", L"%3"},         // not set: as written
    {L"%003", L"%003"},
    {L"%", L"%"},
    {L"100%", L"100%"},
    {L"100 % sure", L"100 % sure"},
    {L"%%1", L"%1"},
    {L"%%%1", L"%one"},
    {L"%%%", L"%%"},
    {L"%x1", L"%x1"},
    {L"<velm:param insert=\"1\"/>", L"one"},
    {L"a<velm:param insert=\"12\"/>b", L"atwelveb"},
    {L"<velm:param insert=\"3\"/>", L"<velm:param insert=\"3\"/>"},
    {L"<velm:param insert=\"\"/>", L"<velm:param insert=\"\"/>"},
    {L"<velm:param insert=\"12345\"/>", L"<velm:param insert=\"12345\"/>"},
    {L"<velm:param insert=\"1\" />", L"<velm:param insert=\"1\" />"},
    {L"<velm:param insert=\"%1\"/>", L"<velm:param insert=\"one\"/>"},
    {L"<velm:param insert=\"1", L"<velm:param insert=\"1"},
    {L"1 < 2 <", L"1 < 2 <"},
    {L"\u0661%\u0661", L"\u0661%\u0661"},  // only ASCII digits number an insert
};

TEST(Message, TextWithInserts)
{
    for (const Row& row : kRows) {
        const Message message = Message::text(row.m_pPattern)
                                    .insert(1, L"one")
                                    .insert(12, L"twelve")
                                    .insert(1234, L"many")
                                    .insert(0, L"zero");
        EXPECT_EQ(message.toString(), row.m_pExpected) << vel::toUtf8Lossy(row.m_pPattern);
    }
}

TEST(Message, InsertedTextIsShownAsItIs)
{
    EXPECT_EQ(Message::text(L"'%1'").insert(1, L"100%%1.xml").toString(), L"'100%%1.xml'");
    EXPECT_EQ(Message::external(L"kmsgKey").insert(1, L"50%%").toString(), L"kmsgKey(50%%)");
}

TEST(Message, FilledInTextIsNotReadAgain)
{
    EXPECT_EQ(Message::text(L"%1").insert(1, L"%2").insert(2, L"x").toString(), L"%2");
}

TEST(Message, InsertsNest)
{
    const Message inner = Message::text(L"[%1]").insert(1, L"deep");
    EXPECT_EQ(Message::text(L"a %1 b").insert(1, inner).toString(), L"a [deep] b");
    EXPECT_EQ(Message::text(L"a %1").insert(1, Message::external(L"kmsgKey").insert(7, inner)).toString(),
              L"a kmsgKey([deep])");
}

TEST(Message, ExternalOneShowsItsInsertsInTheOrderTheyWereSet)
{
    EXPECT_EQ(Message::external(L"kmsgKey").toString(), L"kmsgKey");
    EXPECT_EQ(Message::external(L"kmsgKey").insert(2, L"b").insert(1, L"a").toString(), L"kmsgKey(b, a)");
    EXPECT_EQ(Message::external(L"100%1").insert(1, L"a").toString(), L"100%1(a)");  // a key is no pattern
}

TEST(Message, InsertReplacesTheOneOfItsNumber)
{
    Message message = Message::text(L"%1");
    message.insert(1, L"first").insert(1, L"second");
    EXPECT_EQ(message.inserts().size(), 1U);
    EXPECT_EQ(message.toString(), L"second");
}

TEST(Message, InsertsOfEveryKindAreShown)
{
    const Message nested = Message::text(L"<%1>").insert(1, L"n");
    const Message pattern = Message::text(L"[%1|%2|%3|%4]");
    EXPECT_EQ(Message(pattern).insert(1, L"").insert(2, nested).insert(3, Message::external(L"k")).toString(),
              L"[|<n>|k|%4]");
    EXPECT_EQ(Message(pattern).insert(4, L"d").insert(1, pattern).toString(), L"[[%1|%2|%3|%4]|%2|%3|d]");
    Message changed = Message(pattern).insert(1, nested).insert(2, L"b");
    changed.insert(1, L"plain now").insert(2, nested);
    EXPECT_EQ(changed.toString(), L"[plain now|<n>|%3|%4]");
}

TEST(Message, TellsWhatItIs)
{
    const Message text = Message::text(L"t").insert(4, L"x");
    const Message external = Message::external(L"k");
    EXPECT_FALSE(text.isExternal());
    EXPECT_TRUE(external.isExternal());
    EXPECT_EQ(text.keyOrText(), L"t");
    EXPECT_EQ(external.keyOrText(), L"k");
    ASSERT_NE(text.findInsert(4), nullptr);
    EXPECT_EQ(*text.findInsert(4), Message::text(L"x"));
    EXPECT_EQ(text.findInsert(1), nullptr);
}

TEST(Message, EqualityLooksAtAllOfIt)
{
    const Message message = Message::text(L"t").insert(1, L"x");
    EXPECT_EQ(message, Message::text(L"t").insert(1, L"x"));
    EXPECT_NE(message, Message::text(L"t"));
    EXPECT_NE(message, Message::text(L"t").insert(1, L"y"));
    EXPECT_NE(message, Message::text(L"t").insert(2, L"x"));
    EXPECT_NE(message, Message::text(L"u").insert(1, L"x"));
    EXPECT_NE(message, Message::external(L"t").insert(1, L"x"));
    EXPECT_NE(message, Message::text(L"t").insert(1, Message::external(L"x")));
}

TEST(Message, CopiesAreIndependent)
{
    Message original = Message::text(L"%1").insert(1, L"a");
    const Message copy = original;
    original.insert(1, L"b");
    EXPECT_EQ(copy.toString(), L"a");
    Message assigned = Message::external(L"k");
    assigned = original;
    EXPECT_EQ(assigned.toString(), L"b");
    const Message moved = std::move(assigned);
    EXPECT_EQ(moved.toString(), L"b");
}

TEST(Message, ACopyKeepsItsInsertsWhenTheOtherIsChanged)
{
    Message first = Message::text(L"%1-%2").insert(1, L"a");
    Message second = first;
    second.insert(2, L"b").insert(1, L"c");
    first.insert(2, L"d");
    EXPECT_EQ(first.toString(), L"a-d");
    EXPECT_EQ(second.toString(), L"c-b");
}

TEST(Message, AReplacedInsertKeepsItsPlace)
{
    Message message = Message::external(L"k").insert(3, L"c").insert(1, L"a").insert(2, L"b");
    message.insert(1, L"x");
    EXPECT_EQ(message.toString(), L"k(c, x, b)");
    ASSERT_EQ(message.inserts().size(), 3U);
    EXPECT_EQ(message.inserts()[1].m_nNumber, 1U);
}

TEST(Message, AnInsertMayBeTheMessageItself)
{
    Message message = Message::text(L"<%1>");
    message.insert(1, message);
    EXPECT_EQ(message.toString(), L"<<%1>>");  // without inserts, a text is shown as it is
}

TEST(Message, TheHashIsThatOfTheKeyOrText)
{
    EXPECT_EQ(Message::external(L"k").hash(), vel::hashText(L"k"));
    EXPECT_EQ(Message::text(L"").insert(1, L"x").hash(), vel::hashText(L""));
}

struct ShownRow
{
    const wchar_t* m_pPattern;
    const wchar_t* m_pShown;
};

TEST(Message, APerCentSignOfAPatternIsOneWithoutInserts)
{
    const ShownRow rows[] = {{L"100%% sure", L"100% sure"}, {L"%%", L"%"},        {L"%%%", L"%%"},    {L"%%%%", L"%%"},
                             {L"%%1 %1", L"%1 %1"},         {L"plain", L"plain"}, {L"50 %", L"50 %"}, {L"", L""}};
    for (const ShownRow& row : rows) {
        const Message message = Message::pattern(row.m_pPattern);
        EXPECT_TRUE(message.isPlainText());
        EXPECT_FALSE(message.isExternal());
        EXPECT_EQ(message.toString(), row.m_pShown) << vel::toUtf8Lossy(row.m_pPattern);
        EXPECT_EQ(message.plainText(), row.m_pShown) << vel::toUtf8Lossy(row.m_pPattern);
        EXPECT_EQ(message.keyOrText(), row.m_pPattern);
        EXPECT_EQ(Message::text(L"[%1]").insert(1, message).toString(), String(L"[") + row.m_pShown + L"]");
    }
    EXPECT_EQ(Message::pattern(L"%%1 %1").insert(1, L"one").toString(), L"%1 one");
}

TEST(Message, APatternEqualsTheTextThatIsShownAlike)
{
    EXPECT_EQ(Message::pattern(L"a %1"), Message::text(L"a %1"));
    EXPECT_EQ(Message::pattern(L"5%%"), Message::pattern(L"5%%"));
    EXPECT_NE(Message::pattern(L"5%%"), Message::text(L"5%%"));
}

TEST(Message, OnlyAPlainTextHasOne)
{
    EXPECT_EQ(Message::text(L"a").plainText(), L"a");
    EXPECT_EQ(Message::text(L"a").insert(1, L"x").plainText(), L"");
    EXPECT_EQ(Message::pattern(L"a%%").insert(1, L"x").plainText(), L"");
    EXPECT_EQ(Message::external(L"a").plainText(), L"");
}

struct PatternRow
{
    const wchar_t* m_pPattern;
    const wchar_t* m_pPieces;  // texts in brackets, other inserts as their keys
};

TEST(Message, FillsItsPattern)
{
    const Message values = Message::text(L"%1")
                               .insert(1, Message::external(L"one"))
                               .insert(2, Message::external(L"two"))
                               .insert(3, L"text")
                               .insert(4, L"");
    const PatternRow rows[] = {
        {L"", L"[]"},
        {L"plain", L"[plain]"},
        {L"%1", L"one"},
        {L"a%1%2b", L"[a]onetwo[b]"},
        {L"%%", L"[%]"},
        {L"5%%%1", L"[5%]one"},
        {L"<velm:param insert=\"2\"/> (%1)", L"two[ (]one[)]"},
        {L"%3%4%3", L"[text][][text]"},
        {L"%1%5<velm:param insert=\"5\"/>", L"one[%5][<velm:param insert=\"5\"/>]"},
        {L"100% < %", L"[100% < %]"},
    };
    for (const PatternRow& row : rows) {
        String pieces;
        Message::text(row.m_pPattern)
            .fillPattern(
                values, [&](std::wstring_view text) { pieces.append(L'[').append(text).append(L']'); },
                [&](const Message& insert) { pieces.append(insert.keyOrText()); });
        EXPECT_EQ(pieces, row.m_pPieces) << vel::toUtf8Lossy(row.m_pPattern);
    }
}

}  // namespace
