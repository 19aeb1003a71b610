#include "webi18n/collatemessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <functional>
#include <string>
#include <vector>

#include "failingallocator.h"
#include "vel/messages/messagetable.h"

namespace {

bool s_bOtherLocale = false;

}  // namespace

/// The C library's own stands behind these: while a test says so, the process's locale sorts the other way round. No
/// such locale has to be installed.
extern "C" int wcscoll(const wchar_t* left, const wchar_t* right) noexcept
{
    return s_bOtherLocale ? std::wcscmp(right, left) : std::wcscmp(left, right);
}
extern "C" int wcscoll_l(const wchar_t* left, const wchar_t* right, locale_t /*locale*/) noexcept
{
    return wcscoll(left, right);
}

namespace {

using testing::ElementsAre;
using vel::CollateMessagesLess;
using vel::GDValue;
using vel::Message;
using vel::MessageFormatter;
using vel::String;

/// Values that are made in place.
bool less(CollateMessagesLess& order, const wchar_t* left, const wchar_t* right)
{
    const auto hLeft = vel::makeHandle<GDValue>(String(left));
    const auto hRight = vel::makeHandle<GDValue>(String(right));
    return order(*hLeft, *hRight);
}

TEST(CollateMessages, CapitalBIsBeforeSmallAWhateverTheLocale)
{
    MessageFormatter formatter(nullptr);
    CollateMessagesLess order(formatter);
    EXPECT_TRUE(less(order, L"B", L"a"));
    EXPECT_FALSE(less(order, L"a", L"B"));
    EXPECT_TRUE(less(order, L"z", L"\u00E4"));
    EXPECT_TRUE(less(order, L"\uFFFD", L"\U00010000"));
}

TEST(CollateMessages, NorDoesTheProcesssLocaleCount)
{
    MessageFormatter formatter(nullptr);
    CollateMessagesLess order(formatter);
    s_bOtherLocale = true;
    EXPECT_GT(std::wcscoll(L"a", L"b"), 0) << "the locale sorts otherwise";
    EXPECT_TRUE(less(order, L"a", L"b"));
    EXPECT_FALSE(less(order, L"b", L"a"));
    s_bOtherLocale = false;
}

TEST(CollateMessages, AComparisonAllocatesNothing)
{
    const auto hTable = vel::makeHandle<vel::MessageTable>(String(L"en"));
    hTable->set(L"file", L"The file %1 cannot be read: %2");
    MessageFormatter formatter(hTable);
    CollateMessagesLess order(formatter);
    const auto hText = vel::makeHandle<GDValue>(String(L"The file customers.xml cannot be read: nobody knows why"));
    const auto hPlain = vel::makeHandle<GDValue>(Message::text(L"The file orders.xml cannot be read at all"));
    const auto hMessage = vel::makeHandle<GDValue>(
        Message::external(L"file").insert(1, String(L"products.xml")).insert(2, Message::text(L"no such file")));
    const testsupport::AllocationCount allocations;
    const bool isOrdered = order(*hText, *hPlain) && order(*hPlain, *hMessage) && !order(*hMessage, *hText);
    EXPECT_EQ(allocations.value(), 0U);
    EXPECT_TRUE(isOrdered);
}

TEST(CollateMessages, EqualTextsAreNotSmaller)
{
    MessageFormatter formatter(nullptr);
    CollateMessagesLess order(formatter);
    EXPECT_FALSE(less(order, L"", L""));
    EXPECT_FALSE(less(order, L"ab", L"ab"));
    EXPECT_TRUE(less(order, L"", L"a"));
    EXPECT_TRUE(less(order, L"a", L"ab"));
    EXPECT_FALSE(less(order, L"ab", L"a"));
}

TEST(CollateMessages, TextsEndAtAZero)
{
    MessageFormatter formatter(nullptr);
    CollateMessagesLess order(formatter);
    const auto hShort = vel::makeHandle<GDValue>(String(L"a\0z", 3));
    const auto hOther = vel::makeHandle<GDValue>(String(L"a\0b", 3));
    EXPECT_FALSE(order(*hShort, *hOther));
    EXPECT_FALSE(order(*hOther, *hShort));
}

TEST(CollateMessages, MessagesAreRenderedByTheFormatter)
{
    const auto hTable = vel::makeHandle<vel::MessageTable>(String(L"en"));
    hTable->set(L"first", L"zebra %1");
    hTable->set(L"second", L"aardvark");
    MessageFormatter formatter(hTable);
    CollateMessagesLess order(formatter);
    const auto hFirst = vel::makeHandle<GDValue>(Message::external(L"first").insert(1, String(L"x")));
    const auto hSecond = vel::makeHandle<GDValue>(Message::external(L"second"));
    EXPECT_TRUE(order(*hSecond, *hFirst));
    EXPECT_FALSE(order(*hFirst, *hSecond));
    const auto hText = vel::makeHandle<GDValue>(String(L"zebra y"));
    EXPECT_TRUE(order(*hFirst, *hText));
}

TEST(CollateMessages, LongTextsCompareToTheirEnd)
{
    MessageFormatter formatter(nullptr);
    CollateMessagesLess order(formatter);
    const std::wstring longText(5000, L'x');
    EXPECT_TRUE(less(order, (longText + L"a").c_str(), (longText + L"b").c_str()));
    EXPECT_TRUE(less(order, L"a", L"b")) << "the buffers were emptied";
}

TEST(CollateMessages, ItOrdersAListOfMessages)
{
    MessageFormatter formatter(nullptr);
    std::vector<vel::Handle<GDValue>> values;
    for (const wchar_t* each : {L"b", L"a", L"C"}) {
        values.push_back(vel::makeHandle<GDValue>(String(each)));
    }
    std::sort(values.begin(), values.end(),
              [order = CollateMessagesLess(formatter)](const auto& a, const auto& b) mutable { return order(*a, *b); });
    std::vector<std::wstring> texts;
    for (const auto& each : values) {
        texts.push_back(each->toString().standard());
    }
    EXPECT_THAT(texts, ElementsAre(L"C", L"a", L"b"));
}

}  // namespace
