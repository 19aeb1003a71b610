#include <gtest/gtest.h>

#include <string>

#include "catalogues.h"
#include "printers.h"

// Files far larger than any that people write.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

TEST(LargeFiles, AHundredThousandDefinitionsEachBasedOnTheOneBefore)
{
    std::string definitions = definition("l0", property("am", "the first") + property("dateSeparator", "."));
    std::wstring allowed;
    constexpr int kCount = 100000;
    for (int i = 1; i < kCount; ++i) {
        definitions +=
            "<localeDefinition name=\"l" + std::to_string(i) + "\" basedOn=\"l" + std::to_string(i - 1) + "\"/>";
    }
    for (int i = kCount - 1; i >= 0; --i) {
        allowed += L"L" + std::to_wstring(i) + L",";
    }
    const Catalogue catalogue;
    catalogue.load(definitions, allowed);
    EXPECT_EQ(100000U, catalogue.allowedNames().size());
    EXPECT_EQ(String(L"the first"), catalogue.find(L"l99999").getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"l99999"), catalogue.find(L"l99999").definitionName());
    EXPECT_EQ(String(L"MM.dd.yyyy"), catalogue.find(L"l50000").getInfoAsString(Locale::kDateInputFormat));
}

TEST(LargeFiles, AHundredThousandDefinitionsOfOneNameBasedOnThemselves)
{
    std::string definitions;
    for (int i = 0; i < 100000; ++i) {
        definitions += "<localeDefinition name=\"x\" basedOn=\"X\"/>";
    }
    const Catalogue catalogue;
    catalogue.load(definitions, L"x");
    EXPECT_EQ(1U, catalogue.allowedNames().size());
}

TEST(LargeFiles, AHundredThousandForwardBasesAreAllIgnored)
{
    std::string definitions;
    for (int i = 0; i < 100000; ++i) {
        definitions +=
            "<localeDefinition name=\"l" + std::to_string(i) + "\" basedOn=\"l" + std::to_string(i + 1) + "\"/>";
    }
    const Catalogue catalogue;
    catalogue.load(definitions + definition("l100000", property("am", "never inherited")), L"l0,l99999,l100000");
    EXPECT_EQ(String(L"am"), catalogue.find(L"l0").getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"am"), catalogue.find(L"l99999").getInfoAsString(Locale::kAM));
}

TEST(LargeFiles, AnAllowedValueOfMegabytes)
{
    const Catalogue catalogue;
    catalogue.load(definition("a", "") + definition("b", ""), String());
    std::wstring value;
    for (int i = 0; i < 500000; ++i) {
        value += i % 2 == 0 ? L" a ," : L",x";
    }
    catalogue.allow(value);
    EXPECT_EQ(1U, catalogue.allowedNames().size());
}

}  // namespace
