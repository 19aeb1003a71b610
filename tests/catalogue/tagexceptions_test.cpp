#include <gtest/gtest.h>

#include "printers.h"
#include "vel/messages/messagefilesregistry.h"
#include "vel/messages/messageformatter.h"
#include "webi18n/localetaglookup.h"

// The exceptions that the catalogue provides for hosts, and the message file of their texts.

namespace {

using vel::LocaleTagLookup;
using vel::String;

template <typename Thrown>
void expectMessage(const wchar_t* key)
{
    try {
        throw Thrown(L"xx-yy");
    } catch (const vel::Exception& exception) {
        EXPECT_TRUE(exception.message().isExternal());
        EXPECT_EQ(String(key), exception.message().keyOrText());
        ASSERT_EQ(1U, exception.message().inserts().size());
        ASSERT_NE(nullptr, exception.message().findInsert(1));
        EXPECT_EQ(String(L"xx-yy"), exception.message().findInsert(1)->keyOrText());
        EXPECT_FALSE(exception.message().findInsert(1)->isExternal());

        const vel::Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
        table->set(key, L"No locale <velm:param insert=\"1\"/>.");
        EXPECT_EQ(String(L"No locale xx-yy."), vel::MessageFormatter(table).format(exception.message()));
    }
}

TEST(TagExceptions, AnInvalidTagHasItsKeyAndTheTag)
{
    expectMessage<LocaleTagLookup::InvalidLocaleTag>(L"kmsgInvalidLocaleTag");
}

TEST(TagExceptions, ANotSupportedTagHasItsKeyAndTheTag)
{
    expectMessage<LocaleTagLookup::NotSupportedLocaleTag>(L"kmsgNotSupportedLocaleTag");
}

TEST(TagExceptions, EachMessageStartsWithoutTheLastTag)
{
    const LocaleTagLookup::InvalidLocaleTag first(L"one");
    const LocaleTagLookup::InvalidLocaleTag second(L"two");
    EXPECT_EQ(String(L"one"), first.message().findInsert(1)->keyOrText());
    EXPECT_EQ(String(L"two"), second.message().findInsert(1)->keyOrText());
}

TEST(MessageFile, IsRegisteredWhenTheLibraryIsLoaded)
{
    std::size_t count = 0;
    for (const String& each : vel::MessageFilesRegistry::getInstance().files()) {
        count += each == L"i18nmessages.xml" ? 1 : 0;
    }
    EXPECT_EQ(1U, count);
}

}  // namespace
