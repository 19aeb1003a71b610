#include "sharedtexts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace vel::i18n_details;

SharedTexts listOf(std::initializer_list<std::wstring_view> texts)
{
    SharedTextsBuilder builder;
    for (const std::wstring_view each : texts) {
        builder.add(each);
    }
    return builder.build();
}

TEST(SharedTexts, AListOfOneTextHasOne)
{
    const SharedTexts one(L"AM");
    EXPECT_FALSE(one.isEmpty());
    EXPECT_EQ(one.size(), 1U);
    EXPECT_EQ(one[0], L"AM");
    EXPECT_EQ(one.front(), L"AM");
    EXPECT_EQ(SharedTexts(L"").size(), 1U);
    EXPECT_EQ(SharedTexts(L"").front(), L"");
}

TEST(SharedTexts, NoTextsAreEmptyAndHaveAnEmptyFirst)
{
    EXPECT_TRUE(SharedTexts().isEmpty());
    EXPECT_EQ(SharedTexts().size(), 0U);
    EXPECT_EQ(SharedTexts().front(), L"");
    EXPECT_TRUE(listOf({}).isEmpty());
}

TEST(SharedTexts, KeepTheirOrderAndEmptyOnes)
{
    const SharedTexts texts = listOf({L"Jan", L"", L"March"});
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[0], L"Jan");
    EXPECT_EQ(texts[1], L"");
    EXPECT_EQ(texts[2], L"March");
    EXPECT_EQ(texts.front(), L"Jan");
}

TEST(SharedTexts, MoreTextsThanABuilderHasRoomForAtFirst)
{
    SharedTextsBuilder builder;
    for (int i = 0; i < 1000; ++i) {
        builder.add(std::to_wstring(i));
    }
    const SharedTexts texts = builder.build();
    ASSERT_EQ(texts.size(), 1000U);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(texts[static_cast<std::size_t>(i)], std::to_wstring(i));
    }
}

TEST(SharedTexts, OutliveTheListTheyWereCopiedFrom)
{
    SharedTexts copy;
    {
        const SharedTexts texts = listOf({L"Monday", L"Tuesday"});
        copy = texts;
        EXPECT_EQ(copy[0].data(), texts[0].data()) << "copies share their characters";
    }
    EXPECT_EQ(copy[1], L"Tuesday");
}

}  // namespace
