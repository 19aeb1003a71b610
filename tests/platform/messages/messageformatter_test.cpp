#include "vel/messages/messageformatter.h"

#include <gtest/gtest.h>

#include "printers.h"

namespace {

using vel::Handle;
using vel::makeHandle;
using vel::Message;
using vel::MessageFormatter;
using vel::MessageTable;
using vel::String;

Handle<const MessageTable> german()
{
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"de");
    table->set(L"kmsgHeading", L"<velm:param insert=\"2\"/>: <velm:param insert=\"1\"/>");
    table->set(L"kmsgTwice", L"%1 und %1");
    table->set(L"kmsgShare", L"%1 %% von %2");
    table->set(L"kmsgSure", L"zu 100%% sicher");
    table->set(L"kmsgName", L"Deutsch");
    table->setReference(L"kmsgAlias", L"kmsgName");
    table->setReference(L"kmsgCircle", L"kmsgCircle");
    return table;
}

struct Row
{
    Message m_tMessage;
    const wchar_t* m_pWithTable;
    const wchar_t* m_pWithoutTable;
};

TEST(MessageFormatter, RendersInTheTablesLanguage)
{
    const Row rows[] = {
        {Message::text(L"<velm:param insert=\"1\"/> (%2)").insert(1, L"EUR").insert(2, L"German"), L"EUR (German)",
         L"EUR (German)"},
        {Message::external(L"kmsgAbsent").insert(1, L"xx"), L"kmsgAbsent(xx)", L"kmsgAbsent(xx)"},
        {Message::external(L"kmsgAbsent"), L"kmsgAbsent", L"kmsgAbsent"},
        {Message::external(L"kmsgName"), L"Deutsch", L"kmsgName"},
        {Message::external(L"kmsgAlias"), L"Deutsch", L"kmsgAlias"},
        {Message::external(L"kmsgCircle"), L"kmsgCircle", L"kmsgCircle"},
        {Message::external(L"kmsgHeading").insert(1, L"a").insert(2, L"b"), L"b: a", L"kmsgHeading(a, b)"},
        // Not set: as written. Not named: dropped. Named twice: twice.
        {Message::external(L"kmsgHeading").insert(1, L"a"), L"<velm:param insert=\"2\"/>: a", L"kmsgHeading(a)"},
        {Message::external(L"kmsgName").insert(1, L"a"), L"Deutsch", L"kmsgName(a)"},
        {Message::external(L"kmsgTwice").insert(1, L"a"), L"a und a", L"kmsgTwice(a)"},
        {Message::external(L"kmsgShare").insert(1, L"5").insert(2, L"%1"), L"5 % von %1", L"kmsgShare(5, %1)"},
        {Message::external(L"kmsgSure"), L"zu 100% sicher", L"kmsgSure"},
        {Message::text(L"[%1]").insert(1, Message::external(L"kmsgSure")), L"[zu 100% sicher]", L"[kmsgSure]"},
        // A text without inserts is shown as it is, alone and inserted.
        {Message::text(L"100%%"), L"100%%", L"100%%"},
        {Message::text(L"[%1]").insert(1, L"100%%"), L"[100%%]", L"[100%%]"},
        {Message::text(L""), L"", L""},
        // Inserts are rendered the same way, at every depth.
        {Message::text(L"[%1]").insert(1, Message::external(L"kmsgAlias")), L"[Deutsch]", L"[kmsgAlias]"},
        {Message::external(L"kmsgTwice").insert(1, Message::text(L"(%1)").insert(1, Message::external(L"kmsgName"))),
         L"(Deutsch) und (Deutsch)", L"kmsgTwice((kmsgName))"},
        {Message::external(L"kmsgAbsent").insert(1, Message::external(L"kmsgName")).insert(2, L"x"),
         L"kmsgAbsent(Deutsch, x)", L"kmsgAbsent(kmsgName, x)"},
    };
    const MessageFormatter formatter(german());
    const MessageFormatter bare(Handle<const MessageTable>{});
    for (const Row& row : rows) {
        EXPECT_EQ(formatter.format(row.m_tMessage), row.m_pWithTable) << vel::toUtf8Lossy(row.m_tMessage.toString());
        EXPECT_EQ(bare.format(row.m_tMessage), row.m_pWithoutTable) << vel::toUtf8Lossy(row.m_tMessage.toString());
        EXPECT_EQ(bare.format(row.m_tMessage), row.m_tMessage.toString());
    }
}

TEST(MessageFormatter, SharesItsTable)
{
    const Handle<const MessageTable> table = german();
    {
        const MessageFormatter formatter(table);
        EXPECT_EQ(table->referenceCount(), 2U);
    }
    EXPECT_EQ(table->referenceCount(), 1U);
}

}  // namespace
