#include "vel/messages/gdvariant.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "printers.h"

namespace {

using vel::GDVariant;
using vel::Message;

TEST(GDVariant, EveryKindHasItsPrimitiveType)
{
    EXPECT_EQ(GDVariant().primitiveType(), vel::kTypeUndefined);
    EXPECT_EQ(GDVariant::null().primitiveType(), vel::kTypeNull);
    EXPECT_EQ(GDVariant::boolean(true).primitiveType(), vel::kTypeBoolean);
    EXPECT_EQ(GDVariant::number(1).primitiveType(), vel::kTypeNumber);
    EXPECT_EQ(GDVariant::string(L"").primitiveType(), vel::kTypeString);
}

TEST(GDVariant, OnlyATextMessageWithoutInsertsIsAString)
{
    EXPECT_EQ(GDVariant::message(Message::text(L"t")).primitiveType(), vel::kTypeString);
    EXPECT_EQ(GDVariant::message(Message::text(L"%1")).primitiveType(), vel::kTypeString);
    EXPECT_EQ(GDVariant::message(Message::text(L"%1").insert(1, L"x")).primitiveType(), vel::kTypeNonPrimitive);
    EXPECT_EQ(GDVariant::message(Message::external(L"k")).primitiveType(), vel::kTypeNonPrimitive);
}

TEST(GDVariant, TheNumbersOfTheTypesAreFixed)
{
    EXPECT_EQ(vel::kTypeString, 0);
    EXPECT_EQ(vel::kTypeBoolean, 1);
    EXPECT_EQ(vel::kTypeNumber, 2);
    EXPECT_EQ(vel::kTypeUndefined, 3);
    EXPECT_EQ(vel::kTypeNull, 4);
    EXPECT_EQ(vel::kTypeNonPrimitive, 5);
}

TEST(GDVariant, UndefinedOrNull)
{
    EXPECT_TRUE(GDVariant().isUndefinedOrNull());
    EXPECT_TRUE(GDVariant::null().isUndefinedOrNull());
    EXPECT_FALSE(GDVariant::boolean(false).isUndefinedOrNull());
    EXPECT_FALSE(GDVariant::number(0).isUndefinedOrNull());
    EXPECT_FALSE(GDVariant::string(L"").isUndefinedOrNull());
    EXPECT_FALSE(GDVariant::message(Message::external(L"")).isUndefinedOrNull());
}

TEST(GDVariant, GivesItsMessage)
{
    const GDVariant message = GDVariant::message(Message::external(L"k"));
    ASSERT_NE(message.asMessage(), nullptr);
    EXPECT_EQ(*message.asMessage(), Message::external(L"k"));
    EXPECT_EQ(GDVariant().asMessage(), nullptr);
    EXPECT_EQ(GDVariant::string(L"k").asMessage(), nullptr);
}

TEST(GDVariant, TextForPeople)
{
    EXPECT_EQ(GDVariant().toString(), L"");
    EXPECT_EQ(GDVariant::null().toString(), L"");
    EXPECT_EQ(GDVariant::boolean(true).toString(), L"true");
    EXPECT_EQ(GDVariant::boolean(false).toString(), L"false");
    EXPECT_EQ(GDVariant::string(L"100%% as it is").toString(), L"100%% as it is");
    EXPECT_EQ(GDVariant::message(Message::text(L"a %1").insert(1, L"b")).toString(), L"a b");
    EXPECT_EQ(GDVariant::message(Message::external(L"k").insert(1, L"b")).toString(), L"k(b)");
}

TEST(GDVariant, NumbersInTheirShortestForm)
{
    EXPECT_EQ(GDVariant::number(0).toString(), L"0");
    EXPECT_EQ(GDVariant::number(-12).toString(), L"-12");
    EXPECT_EQ(GDVariant::number(0.1).toString(), L"0.1");
    EXPECT_EQ(GDVariant::number(0.5).toString(), L"0.5");
    EXPECT_EQ(GDVariant::number(1e100).toString(), L"1e+100");
    EXPECT_EQ(GDVariant::number(-std::numeric_limits<double>::denorm_min()).toString(), L"-5e-324");
    EXPECT_EQ(GDVariant::number(-2.2250738585072014e-308).toString(), L"-2.2250738585072014e-308");
}

TEST(GDVariant, EqualityLooksAtKindAndValue)
{
    const GDVariant all[] = {GDVariant(),
                             GDVariant::null(),
                             GDVariant::boolean(false),
                             GDVariant::boolean(true),
                             GDVariant::number(0),
                             GDVariant::number(1),
                             GDVariant::string(L""),
                             GDVariant::string(L"t"),
                             GDVariant::message(Message::text(L"t")),
                             GDVariant::message(Message::external(L"t"))};
    for (const GDVariant& a : all) {
        for (const GDVariant& b : all) {
            EXPECT_EQ(a == b, &a == &b);
        }
    }
    EXPECT_EQ(GDVariant::string(L"t"), GDVariant::string(L"t"));
}

TEST(GDVariant, IsAValue)
{
    GDVariant original = GDVariant::message(Message::text(L"a"));
    const GDVariant copy = original;
    original = GDVariant::number(2);
    EXPECT_EQ(copy.toString(), L"a");
    GDVariant moved = copy;
    original = std::move(moved);
    EXPECT_EQ(original, copy);
}

}  // namespace
