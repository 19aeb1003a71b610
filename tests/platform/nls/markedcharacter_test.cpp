#include "markedcharacter.h"

#include <gtest/gtest.h>

#include <string>

#include "builtsort.h"

// Marks that change places, and marks that belong to a letter though others stand between.

namespace {

using namespace vel::nls;
using namespace builtsort;

void expectOneKeyWithoutIcu(const SortData& data, std::initializer_list<std::u16string_view> texts)
{
    const std::string key = longKey(data, *texts.begin());
    for (const std::u16string_view text : texts) {
        EXPECT_EQ(longKey(data, text), key) << testsupport::bytesOf(text);
        EXPECT_EQ(slowUnits(data, text), 0U) << testsupport::bytesOf(text);
    }
}

TEST(MarkedCharacter, ALetterHasOneKeyHoweverItIsWritten)
{
    const auto vietnamese = build("vi");
    // e with circumflex and dot below, o with horn and acute, capital A with breve and tilde.
    expectOneKeyWithoutIcu(*vietnamese,
                           {u"\u1EC7", u"e\u0323\u0302", u"e\u0302\u0323", u"\u00EA\u0323", u"\u1EB9\u0302"});
    expectOneKeyWithoutIcu(*vietnamese,
                           {u"\u1EDB", u"o\u031B\u0301", u"o\u0301\u031B", u"\u01A1\u0301", u"\u00F3\u031B"});
    expectOneKeyWithoutIcu(*vietnamese, {u"\u1EB4", u"A\u0306\u0303", u"\u0102\u0303"});
    expectOneKeyWithoutIcu(*build("th"), {u"\u0E21\u0E39\u0E48\u0E01", u"\u0E21\u0E48\u0E39\u0E01"});
}

TEST(MarkedCharacter, AMarkJoinsTheLetterThoughAnotherStandsBetween)
{
    // "ê" is a letter of its own behind all that begin with "e", with a dot as without.
    const auto vietnamese = build("vi");
    EXPECT_LT(longKey(*vietnamese, u"ez"), longKey(*vietnamese, u"e\u0323\u0302a"));
    EXPECT_GT(longKey(*vietnamese, u"ez"), longKey(*vietnamese, u"e\u0323a"));
    // So is Swedish "å", behind "z"; there nothing changes places.
    const auto swedish = build("sv");
    EXPECT_LT(longKey(*swedish, u"z"), longKey(*swedish, u"a\u0323\u030A"));
    EXPECT_EQ(slowUnits(*swedish, u"a\u0323\u030A"), 0U);
    EXPECT_EQ(longKey(*swedish, u"a\u0323\u030A", SortStrength::kPrimary),
              longKey(*swedish, u"\u00E5", SortStrength::kPrimary));
}

TEST(MarkedCharacter, AMarkOfTheSameClassBetweenKeepsItApart)
{
    // An acute and a ring are both above: the ring does not reach the letter.
    const auto swedish = build("sv");
    EXPECT_GT(longKey(*swedish, u"z"), longKey(*swedish, u"a\u0301\u030A"));
    EXPECT_EQ(slowUnits(*swedish, u"a\u0301\u030A"), 0U);
    const auto vietnamese = build("vi");
    EXPECT_GT(longKey(*vietnamese, u"ez"), longKey(*vietnamese, u"e\u0301\u0302"));
    EXPECT_NE(longKey(*vietnamese, u"e\u0301\u0302"), longKey(*vietnamese, u"e\u0302\u0301"));
}

TEST(MarkedCharacter, MarksWithoutALetterAreBroughtIntoOrder)
{
    const auto vietnamese = build("vi");
    expectOneKeyWithoutIcu(*vietnamese, {u"\u0323\u0302", u"\u0302\u0323"});
    expectOneKeyWithoutIcu(*vietnamese, {u"a \u0323\u0302", u"a \u0302\u0323"});
}

TEST(MarkedCharacter, WhatIsNotKnownOfMarksIsLeftToIcu)
{
    const auto vietnamese = build("vi");
    // A mark that stands for another, and one beyond U+FFFF.
    EXPECT_NE(slowUnits(*vietnamese, u"e\u0340\u0323"), 0U);
    EXPECT_NE(slowUnits(*vietnamese, u"e\u0302\U0001D165"), 0U);
    EXPECT_EQ(slowUnits(*vietnamese, u"e\u0302" + std::u16string(15, u'\u0323')), 0U);
    // The letter's own mark counts.
    EXPECT_EQ(slowUnits(*vietnamese, u"\u00EA" + std::u16string(15, u'\u0323')), 0U);
    EXPECT_NE(slowUnits(*vietnamese, u"\u00EA" + std::u16string(16, u'\u0323')), 0U);
    EXPECT_EQ(longKey(*vietnamese, u"\u00EA" + std::u16string(16, u'\u0323')),
              longKey(*vietnamese, u"e" + std::u16string(16, u'\u0323') + u"\u0302"));
}

}  // namespace
