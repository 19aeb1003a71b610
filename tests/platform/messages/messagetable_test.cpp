#include "vel/messages/messagetable.h"

#include <gtest/gtest.h>

#include <ctime>
#include <new>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "failingallocator.h"
#include "printers.h"
#include "temporaryfolder.h"
#include "vel/messages/messageformatter.h"
#include "vel/xml/xmldocument.h"

namespace {

using testsupport::TemporaryFolder;
using vel::FilePath;
using vel::GDVariant;
using vel::Handle;
using vel::makeHandle;
using vel::Message;
using vel::MessageTable;
using vel::String;
using vel::XmlDocument;

const char kFile[] = R"(<messages xmlns="com.quellin.messages/v1" xmlns:velm="com.quellin.messages/v1" language="en">
  <message key="kmsgLocaleName_enUS">English (United States)</message>
  <message key="kmsgHeading"><velm:param insert="1"/> (<velm:param insert="2"/>)</message>
  <message key="kmsgAlias"><velm:ref key="kmsgLocaleName_enUS"/></message>
  <message key="kmsgAliasOfAlias"><velm:ref key="kmsgAlias"/></message>
  <message key="kmsgDangling"><velm:ref key="kmsgNowhere"/></message>
  <message key="kmsgSelf"><velm:ref key="kmsgSelf"/></message>
  <message key="kmsgA"><velm:ref key="kmsgB"/></message>
  <message key="kmsgB"><velm:ref key="kmsgA"/></message>
  <message key="kmsgIntoCircle"><velm:ref key="kmsgA"/></message>
  <message key="kmsgEmpty"/>
  <message>no key</message>
  <message key="">empty key</message>
  <other key="kmsgOther">no message</other>
  <group><message key="kmsgNested">not below the root</message></group>
</messages>)";

Handle<MessageTable> tableOf(std::string_view xml)
{
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"en");
    table->load(XmlDocument::parse(xml));
    return table;
}

GDVariant text(const wchar_t* value)
{
    return GDVariant::message(Message::text(value));
}

TEST(MessageTable, StartsEmpty)
{
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"pt-BR");
    EXPECT_EQ(table->language(), L"pt-BR");
    EXPECT_EQ(table->size(), 0U);
    EXPECT_EQ(table->lookUp(L"k"), GDVariant());
    EXPECT_EQ(table->lookUp(L""), GDVariant());
}

TEST(MessageTable, LoadsTheMessagesThatHaveAKey)
{
    const Handle<MessageTable> table = tableOf(kFile);
    EXPECT_EQ(table->size(), 10U);
    EXPECT_EQ(table->lookUp(L"kmsgLocaleName_enUS"), text(L"English (United States)"));
    EXPECT_EQ(table->lookUp(L"kmsgHeading"), text(L"<velm:param insert=\"1\"/> (<velm:param insert=\"2\"/>)"));
    EXPECT_EQ(table->lookUp(L"kmsgEmpty"), text(L""));
    for (const wchar_t* absent : {L"", L"kmsgOther", L"kmsgNested", L"kmsglocalename_enus", L"kmsgNowhere"}) {
        EXPECT_EQ(table->lookUp(absent), GDVariant()) << vel::toUtf8Lossy(absent);
    }
}

TEST(MessageTable, FollowsReferencesAndGivesUpOnCircles)
{
    const Handle<MessageTable> table = tableOf(kFile);
    EXPECT_EQ(table->lookUp(L"kmsgAlias"), text(L"English (United States)"));
    EXPECT_EQ(table->lookUp(L"kmsgAliasOfAlias"), text(L"English (United States)"));
    for (const wchar_t* key : {L"kmsgDangling", L"kmsgSelf", L"kmsgA", L"kmsgB", L"kmsgIntoCircle"}) {
        EXPECT_EQ(table->lookUp(key), GDVariant()) << vel::toUtf8Lossy(key);
    }
}

TEST(MessageTable, AChainThroughEveryMessageIsFollowedToItsEnd)
{
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"en");
    for (int i = 0; i < 1000; ++i) {
        table->setReference(std::to_wstring(i), std::to_wstring(i + 1));
    }
    EXPECT_EQ(table->lookUp(L"0"), GDVariant());
    table->set(L"1000", L"end");
    EXPECT_EQ(table->lookUp(L"0"), text(L"end"));
    table->setReference(L"1000", L"0");
    EXPECT_EQ(table->lookUp(L"0"), GDVariant());
}

TEST(MessageTable, AValueShowsAPerCentSignForTwo)
{
    const Handle<MessageTable> table =
        tableOf("<m><message key='a'>100%% sure</message><message key='b'><ref key='a'/></message></m>");
    table->set(L"c", L"%% of %1");
    for (const wchar_t* key : {L"a", L"b"}) {
        EXPECT_EQ(table->lookUp(key).toString(), L"100% sure");
        EXPECT_EQ(table->lookUp(key).primitiveType(), vel::kTypeString);
        const GDVariant resolved = table->resolveReferences(GDVariant::message(Message::external(key)));
        EXPECT_EQ(resolved.toString(), L"100% sure");
        EXPECT_EQ(vel::MessageFormatter(table).format(*resolved.asMessage()), L"100% sure");
    }
    EXPECT_EQ(table->lookUp(L"c").toString(), L"% of %1");
    EXPECT_EQ(table->resolveReferences(GDVariant::message(Message::external(L"c").insert(1, L"5"))).toString(),
              L"% of 5");
}

/// Messages that each refer to the next; behind the last one stands what is given.
std::string chain(int length, const std::string& end)
{
    std::string messages;
    for (int i = 0; i < length; ++i) {
        messages += "<message key='" + std::to_string(i) + "'><ref key='" + std::to_string(i + 1) + "'/></message>";
    }
    return "<m>" + messages + "<message key='" + std::to_string(length) + "'>" + end + "</message></m>";
}

/// The processor time of many look-ups of one key, in the clock's ticks.
std::clock_t timeOfLookUps(const MessageTable& table, std::wstring_view key)
{
    const std::clock_t start = std::clock();
    for (int i = 0; i < 20000; ++i) {
        EXPECT_NE(table.find(key), nullptr);
    }
    return std::clock() - start;
}

TEST(MessageTable, ALongChainCostsALookUpAsMuchAsNone)
{
    // Followed anew each time, 16,000 references would cost the first thousands of times what the last costs.
    const Handle<MessageTable> table = tableOf(chain(16000, "end"));
    EXPECT_EQ(table->lookUp(L"0"), text(L"end"));
    const std::clock_t ofTheText = timeOfLookUps(*table, L"16000");
    EXPECT_LT(timeOfLookUps(*table, L"0"), 50 * ofTheText + CLOCKS_PER_SEC / 10);
}

TEST(MessageTable, ACircleOfManyIsNoMessageForAnyOfThem)
{
    const Handle<MessageTable> table = tableOf(chain(16000, "<ref key='8000'/>"));
    for (int i = 0; i <= 16000; ++i) {
        ASSERT_EQ(table->find(std::to_wstring(i)), nullptr) << i;
    }
    table->set(L"16000", L"end");
    EXPECT_EQ(table->lookUp(L"0"), text(L"end"));
}

TEST(MessageTable, TheVersionIsAnotherAfterEveryChangeAndForEveryTable)
{
    std::set<std::uint64_t> versions;
    for (int i = 0; i < 2; ++i) {
        const Handle<MessageTable> table = makeHandle<MessageTable>(L"en");
        const auto expectNew = [&] { EXPECT_TRUE(versions.insert(table->version()).second); };
        expectNew();
        table->set(L"a", L"1");
        expectNew();
        table->set(L"a", L"1");
        expectNew();
        table->setReference(L"b", L"a");
        expectNew();
        table->load(XmlDocument::parse(kFile));
        expectNew();
        EXPECT_EQ(table->lookUp(L"b"), text(L"1"));
        EXPECT_EQ(versions.count(table->version()), 1U);
    }
}

TEST(MessageTable, SetAndSetReferenceReplace)
{
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"en");
    table->set(L"a", L"1");
    table->set(L"a", L"2");
    table->setReference(L"b", L"a");
    EXPECT_EQ(table->lookUp(L"b"), text(L"2"));
    table->set(L"b", L"3");
    EXPECT_EQ(table->lookUp(L"b"), text(L"3"));
    table->setReference(L"a", L"b");
    EXPECT_EQ(table->lookUp(L"a"), text(L"3"));
    EXPECT_EQ(table->size(), 2U);
}

TEST(MessageTable, ALaterMessageReplacesAnEarlierOne)
{
    const Handle<MessageTable> table =
        tableOf("<m><message key='a'>1</message><message key='b'>1</message><message key='a'>2</message></m>");
    EXPECT_EQ(table->lookUp(L"a"), text(L"2"));
    table->load(XmlDocument::parse("<m><message key='b'>3</message><message key='c'>4</message></m>"));
    EXPECT_EQ(table->size(), 3U);
    EXPECT_EQ(table->lookUp(L"a"), text(L"2"));
    EXPECT_EQ(table->lookUp(L"b"), text(L"3"));
    EXPECT_EQ(table->lookUp(L"c"), text(L"4"));
}

TEST(MessageTable, NamesAreLocalNamesAndTheRootHasAny)
{
    const Handle<MessageTable> table = tableOf(
        "<p:any xmlns:p='urn:p'><p:message p:key='c' key='a'>1</p:message><Message key='b'>2</Message>"
        "<message p:key='d'>3</message></p:any>");
    EXPECT_EQ(table->lookUp(L"a"), text(L"1"));
    EXPECT_EQ(table->size(), 1U);
}

TEST(MessageTable, AFileThatCannotBeReadChangesNothing)
{
    const TemporaryFolder folder;
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"en");
    table->load(folder.write("good.xml", "<m><message key='a'>1</message></m>"));
    const FilePath bad = folder.write("bad.xml", "<m><message key='a'>2</message><message key='b'>3</message>");
    EXPECT_THROW(table->load(bad), vel::XmlException);
    EXPECT_THROW(table->load(folder.path().join(FilePath(String(L"absent.xml")))), vel::XmlException);
    EXPECT_EQ(table->size(), 1U);
    EXPECT_EQ(table->lookUp(L"a"), text(L"1"));
}

TEST(MessageTable, NothingChangesAndNothingLeaksWhenMemoryRunsOut)
{
    const XmlDocument document = XmlDocument::parse(
        "<m><message key='a key that is long enough'>a text <velm:param xmlns:velm='urn:m' insert='1'/> with an "
        "insert</message><message key='b'>replaced</message><message key='c'><ref key='another long "
        "key'/></message></m>");
    const Handle<MessageTable> table = makeHandle<MessageTable>(L"en");
    table->set(L"b", L"before");
    table->set(L"d", L"kept");
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    for (std::size_t nth = 0;; ++nth) {
        ASSERT_LT(nth, 1000U);
        bool thrown = false;
        {
            const testsupport::FailingAllocations failing(nth);
            try {
                table->load(document);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
        }
        if (!thrown) {
            EXPECT_GT(nth, 5U);
            break;
        }
        ASSERT_EQ(testsupport::outstandingBlocks(), before) << nth;
        ASSERT_EQ(table->size(), 2U) << nth;
        ASSERT_EQ(table->lookUp(L"b"), text(L"before")) << nth;
    }
    EXPECT_EQ(table->size(), 4U);
    EXPECT_EQ(table->lookUp(L"b"), text(L"replaced"));
    EXPECT_EQ(table->lookUp(L"d"), text(L"kept"));
}

TEST(ResolveReferences, WhatIsNoExternalMessageStays)
{
    const Handle<MessageTable> table = tableOf(kFile);
    const GDVariant values[] = {GDVariant(),
                                GDVariant::null(),
                                GDVariant::boolean(true),
                                GDVariant::number(2),
                                GDVariant::string(L"kmsgAlias"),
                                text(L"kmsgAlias"),
                                GDVariant::message(Message::text(L"%1").insert(1, Message::external(L"kmsgAlias")))};
    for (const GDVariant& value : values) {
        EXPECT_EQ(table->resolveReferences(value), value);
    }
}

TEST(ResolveReferences, AnExternalMessageBecomesItsText)
{
    const Handle<MessageTable> table = tableOf(kFile);
    const auto resolve = [&](const wchar_t* key) {
        return table->resolveReferences(GDVariant::message(Message::external(key)));
    };
    EXPECT_EQ(resolve(L"kmsgLocaleName_enUS"), text(L"English (United States)"));
    EXPECT_EQ(resolve(L"kmsgAliasOfAlias"), text(L"English (United States)"));
    EXPECT_EQ(resolve(L"kmsgLocaleName_enUS").primitiveType(), vel::kTypeString);
    EXPECT_TRUE(resolve(L"kmsgNowhere").isUndefinedOrNull());
    EXPECT_TRUE(resolve(L"kmsgSelf").isUndefinedOrNull());
    EXPECT_TRUE(resolve(L"").isUndefinedOrNull());
}

TEST(ResolveReferences, InsertsAreResolvedLikewise)
{
    const Handle<MessageTable> table = tableOf(kFile);
    const Message heading =
        Message::external(L"kmsgHeading").insert(1, L"$").insert(2, Message::external(L"kmsgAlias"));
    const GDVariant resolved = table->resolveReferences(GDVariant::message(heading));
    ASSERT_NE(resolved.asMessage(), nullptr);
    EXPECT_FALSE(resolved.asMessage()->isExternal());
    EXPECT_EQ(resolved.toString(), L"$ (English (United States))");
    EXPECT_EQ(resolved.primitiveType(), vel::kTypeNonPrimitive);

    const Message nested = Message::external(L"kmsgHeading").insert(1, heading).insert(2, L"x");
    EXPECT_EQ(table->resolveReferences(GDVariant::message(nested)).toString(), L"$ (English (United States)) (x)");
}

TEST(ResolveReferences, AnInsertWithoutAMessageStaysExternal)
{
    const Handle<MessageTable> table = tableOf(kFile);
    const Message heading = Message::external(L"kmsgHeading").insert(1, Message::external(L"kmsgNowhere"));
    EXPECT_EQ(table->resolveReferences(GDVariant::message(heading)).toString(),
              L"kmsgNowhere (<velm:param insert=\"2\"/>)");
}

TEST(MessageTable, IsReadFromManyThreads)
{
    const Handle<const MessageTable> table = tableOf(kFile);
    std::vector<int> right(8, 0);
    std::vector<std::thread> threads;
    for (int& count : right) {
        threads.emplace_back([&count, table] {
            for (int round = 0; round < 500; ++round) {
                count += table->lookUp(L"kmsgAliasOfAlias") == text(L"English (United States)") ? 1 : 0;
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(right, std::vector<int>(8, 500));
}

}  // namespace
