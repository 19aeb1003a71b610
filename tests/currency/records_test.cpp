#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "currencies.h"

// One record: what its operations return, and copies of it.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::GDVariant;
using vel::Handle;
using vel::makeHandle;
using vel::String;

const std::string kFull = currency("loc:de-de", "local",
                                   "symbol=\"\xE2\x82\xAC\" format=\"# $\" digits=\"2\" locale=\"de-de\" "
                                   "displayMessage=\"kmsgCaption\" displayName=\"kmsgName\" display=\"false\" "
                                   "placeholder=\"true\" thousandsSeparator=\"false\"",
                                   negative("trailing", "# $-"));

// A published record stays as it is, and so does what it remembers of its captions.
static_assert(!std::is_copy_assignable_v<Currency> && !std::is_move_assignable_v<Currency>);

TEST(CurrencyRecord, EveryAccessorReturnsItsField)
{
    const Handle<const Currency> record = recordOf(kFull);
    EXPECT_EQ(String(L"\u20AC"), record->getCurrencySymbol());
    EXPECT_EQ(String(L"# $"), record->getFormat());
    EXPECT_EQ(String(L"loc:de-de"), record->getTag());
    EXPECT_EQ(2, record->getDefaultDigits());
    EXPECT_EQ(Currency::kLocal, record->getType());
    EXPECT_EQ(String(L"minus=-# $;parens=(# $);trailing=# $-;"), negativesOf(*record));
    EXPECT_FALSE(record->displayAsChoice());
    EXPECT_EQ(String(L"trailing"), record->getPreferredNegativeTag());
    EXPECT_TRUE(record->isPlaceholder());
    EXPECT_FALSE(record->useThousandsSeparator());
    EXPECT_EQ(String(L"de-de"), record->getLocaleDefinitionName());
}

TEST(CurrencyRecord, CaptionAndNameAreExternalMessages)
{
    const Handle<const Currency> record = recordOf(kFull);
    GDVariant out = GDVariant::number(5);
    record->getDisplayMessage(out);
    ASSERT_NE(nullptr, out.asMessage());
    EXPECT_EQ(vel::kTypeNonPrimitive, out.primitiveType());
    EXPECT_TRUE(*out.asMessage() == vel::Message::external(L"kmsgCaption"));
    record->getDisplayName(out);
    ASSERT_NE(nullptr, out.asMessage());
    EXPECT_TRUE(*out.asMessage() == vel::Message::external(L"kmsgName"));
}

TEST(CurrencyRecord, WithoutCaptionAndNameTheyAreAssignedUndefined)
{
    const Handle<const Currency> record = recordOf(currency("x", "local"));
    GDVariant out = GDVariant::number(5);
    record->getDisplayMessage(out);
    EXPECT_EQ(vel::kTypeUndefined, out.primitiveType());
    out = GDVariant::null();
    record->getDisplayName(out);
    EXPECT_EQ(vel::kTypeUndefined, out.primitiveType());
}

TEST(CurrencyRecord, AnEmptyRecordHasTheStatedDefaults)
{
    const Handle<Currency> record = makeHandle<Currency>();
    GDVariant out = GDVariant::number(5);
    EXPECT_TRUE(record->getCurrencySymbol().isEmpty());
    EXPECT_TRUE(record->getFormat().isEmpty());
    EXPECT_TRUE(record->getTag().isEmpty());
    EXPECT_TRUE(record->getNegativeFormats().empty());
    EXPECT_TRUE(record->getPreferredNegativeTag().isEmpty());
    EXPECT_TRUE(record->displayAsChoice());
    EXPECT_FALSE(record->isPlaceholder());
    EXPECT_FALSE(record->useThousandsSeparator());
    record->getDisplayMessage(out);
    EXPECT_EQ(vel::kTypeUndefined, out.primitiveType());
}

TEST(CurrencyRecord, TypesAndNegativeFormatsAreWhatHostsStore)
{
    EXPECT_EQ(0U, static_cast<unsigned>(Currency::kLocal));
    EXPECT_EQ(1U, static_cast<unsigned>(Currency::kInternational));
    const Currency::NegativeFormat original(L"-$#", L"minus");
    Currency::NegativeFormat copy;
    copy = original;
    EXPECT_EQ(String(L"-$#"), copy.getFormat());
    EXPECT_EQ(String(L"minus"), copy.getTag());
    EXPECT_TRUE((std::is_base_of_v<vel::RefCounted, Currency>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<const Currency&>().getTag()), const String&>));
}

TEST(CurrencyRecord, ACloneEqualsItsOriginalAndIsOwnedByNobody)
{
    const Handle<const Currency> record = recordOf(kFull);
    Currency* clone = record->clone();
    EXPECT_EQ(0U, clone->referenceCount());
    const Handle<Currency> owner(clone);
    EXPECT_EQ(1U, clone->referenceCount());
    EXPECT_EQ(1U, record->referenceCount());
    EXPECT_EQ(outline(*record), outline(*clone));
    EXPECT_EQ(Currency::kLocal, clone->getType());
}

TEST(CurrencyRecord, ACloneIsIndependentOfItsOriginal)
{
    Handle<const Currency> record = recordOf(kFull);
    const Handle<Currency> clone(record->clone());
    clone->setLocaleDefinitionName(L"de-at");
    EXPECT_EQ(String(L"de-at"), clone->getLocaleDefinitionName());
    EXPECT_EQ(String(L"de-de"), record->getLocaleDefinitionName());
    EXPECT_NE(record->getTag().data(), clone->getTag().data());
    EXPECT_NE(&record->getNegativeFormats().at(L"minus"), &clone->getNegativeFormats().at(L"minus"));
    record = {};
    EXPECT_EQ(String(L"minus=-# $;parens=(# $);trailing=# $-;"), negativesOf(*clone));
    const Handle<const Currency> second(clone->clone());
    EXPECT_EQ(String(L"de-at"), second->getLocaleDefinitionName());
}

}  // namespace
