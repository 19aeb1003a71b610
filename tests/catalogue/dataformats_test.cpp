#include <gtest/gtest.h>

#include "catalogues.h"
#include "printers.h"

// The standard data formats.

namespace {

using namespace testsupport;

TEST(DataFormats, AreNoneBeforeTheFirstLoad)
{
    const Catalogue catalogue;
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"[MMMM]"));
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L""));
}

TEST(DataFormats, TheFourFixedOnesAreThereWhateverTheFileSays)
{
    const Catalogue catalogue;
    catalogue.load("", L"");
    for (const wchar_t* format : {L"[MMMM]", L"[MMM]", L"[DDDD]", L"[DDD]"}) {
        EXPECT_TRUE(catalogue.lookup().isValidDataFormat(format));
    }
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"[MM]"));
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"MMMM"));
}

TEST(DataFormats, AreCaseSensitive)
{
    const Catalogue catalogue;
    catalogue.load("", L"");
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"[mmmm]"));
    EXPECT_TRUE(catalogue.lookup().isValidDataFormat(L"[MMMM]"));
}

TEST(DataFormats, MonthNamesCountToo)
{
    const Catalogue catalogue;
    catalogue.load(definition("a", listProperty("monthNames", {"January"})), L"");
    EXPECT_TRUE(catalogue.lookup().isValidDataFormat(L"January"));
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"january"));
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"January "));
}

TEST(DataFormats, AreEveryNamelessListEntryAndNoOther)
{
    const Catalogue catalogue;
    catalogue.load(
        definition("a", property("dateShortFormat", "scalar") + listProperty("dateFormats", {" d ", "", "d"}) +
                            "<property><property>in a nameless list</property></property>"
                            "<property name=\"unknown\"><property name=\"\">empty name</property>"
                            "<property name=\"K\">named</property><other>other element</other>"
                            "<property>out<property>deep</property></property></property>"
                            "<list><property>not below a property</property></list>"),
        L"");
    for (const wchar_t* format : {L" d ", L"d", L"in a nameless list", L"empty name", L"outdeep"}) {
        EXPECT_TRUE(catalogue.lookup().isValidDataFormat(format)) << vel::toUtf8Lossy(format);
    }
    for (const wchar_t* format : {L"scalar", L"", L"named", L"other element", L"deep", L"not below a property"}) {
        EXPECT_FALSE(catalogue.lookup().isValidDataFormat(format)) << vel::toUtf8Lossy(format);
    }
}

TEST(DataFormats, OfTheLastFileReplaceThoseBefore)
{
    const Catalogue catalogue;
    catalogue.load(definition("a", listProperty("dateFormats", {"one"})), L"");
    catalogue.load(definition("b", listProperty("dateFormats", {"two"}), "a"), L"");
    EXPECT_FALSE(catalogue.lookup().isValidDataFormat(L"one"));
    EXPECT_TRUE(catalogue.lookup().isValidDataFormat(L"two"));
    EXPECT_TRUE(catalogue.lookup().isValidDataFormat(L"[DDD]"));
}

TEST(DataFormats, OfThousandsEachIsFoundAndNoneBesides)
{
    std::string entries;
    for (int i = 0; i < 5000; ++i) {
        entries += "<property>" + std::to_string(i * 7) + "</property><property>dd" + std::to_string(i) + "</property>";
    }
    const Catalogue catalogue;
    catalogue.load(definition("a", property("dateFormats", entries) + property("timeFormats", entries)), L"");
    for (int i = 0; i < 35000; ++i) {
        ASSERT_EQ(i % 7 == 0, catalogue.lookup().isValidDataFormat(std::to_wstring(i))) << i;
        ASSERT_EQ(i < 5000, catalogue.lookup().isValidDataFormat(L"dd" + std::to_wstring(i))) << i;
    }
}

TEST(DataFormats, OfADefinitionThatIsNotAllowedCount)
{
    const Catalogue catalogue;
    catalogue.load(definition("a", listProperty("timeFormats", {"HH"})), L"");
    EXPECT_TRUE(catalogue.lookup().isValidDataFormat(L"HH"));
}

}  // namespace
