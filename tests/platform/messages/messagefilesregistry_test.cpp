#include "vel/messages/messagefilesregistry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "printers.h"
#include "temporaryfolder.h"
#include "vel/xml/xmlexception.h"

namespace {

using testsupport::TemporaryFolder;
using vel::FilePath;
using vel::GDVariant;
using vel::Handle;
using vel::Message;
using vel::MessageFilesRegistry;
using vel::MessageTable;
using vel::String;

// Before main: registration works from any static initialiser.
const bool g_bRegistered = [] {
    MessageFilesRegistry::getInstance().registerFile(L"first.xml");
    MessageFilesRegistry::getInstance().registerFile(L"second.xml");
    MessageFilesRegistry::getInstance().registerFile(L"first.xml");
    return true;
}();

std::string fileOf(const std::string& messages)
{
    return "<messages>" + messages + "</messages>";
}

GDVariant text(const wchar_t* value)
{
    return GDVariant::message(Message::text(value));
}

Handle<const MessageTable> load(const TemporaryFolder& folder, const wchar_t* language)
{
    return MessageFilesRegistry::getInstance().loadTable(folder.path(), language);
}

TEST(MessageFilesRegistry, KeepsEachNameOnceInOrder)
{
    ASSERT_TRUE(g_bRegistered);
    EXPECT_EQ(&MessageFilesRegistry::getInstance(), &MessageFilesRegistry::getInstance());
    const std::vector<String> files = MessageFilesRegistry::getInstance().files();
    ASSERT_GE(files.size(), 2U);
    EXPECT_EQ(files[0], L"first.xml");
    EXPECT_EQ(files[1], L"second.xml");
    EXPECT_EQ(std::count(files.begin(), files.end(), String(L"first.xml")), 1);
}

TEST(MessageFilesRegistry, LoadsTheFilesOfTheLanguageInOrder)
{
    const TemporaryFolder folder;
    folder.write("en/first.xml", fileOf("<message key='a'>1</message><message key='b'>1</message>"));
    folder.write("en/second.xml", fileOf("<message key='b'>2</message><message key='c'><ref key='a'/></message>"));
    folder.write("en/unregistered.xml", fileOf("<message key='d'>4</message>"));
    folder.write("de/first.xml", fileOf("<message key='a'>eins</message>"));
    const Handle<const MessageTable> english = load(folder, L"en");
    EXPECT_EQ(english->language(), L"en");
    EXPECT_EQ(english->size(), 3U);
    EXPECT_EQ(english->lookUp(L"a"), text(L"1"));
    EXPECT_EQ(english->lookUp(L"b"), text(L"2"));
    EXPECT_EQ(english->lookUp(L"c"), text(L"1"));
    const Handle<const MessageTable> german = load(folder, L"de");
    EXPECT_EQ(german->size(), 1U);
    EXPECT_EQ(german->lookUp(L"a"), text(L"eins"));
}

TEST(MessageFilesRegistry, LaterFoldersStandOnTopOfEarlierOnes)
{
    const TemporaryFolder pack;
    pack.write("en/first.xml", fileOf("<message key='a'>pack</message><message key='b'>pack</message>"));
    pack.write("en/second.xml", fileOf("<message key='c'>pack</message>"));
    const TemporaryFolder own;
    // The file that is registered first, in the later folder.
    own.write("en/first.xml", fileOf("<message key='b'>own</message><message key='c'>own</message>"));
    own.write("de/first.xml", fileOf("<message key='a'>eigen</message>"));
    const std::vector<FilePath> folders = {pack.path(), own.path()};
    const Handle<const MessageTable> english = MessageFilesRegistry::getInstance().loadTable(folders, L"en");
    EXPECT_EQ(english->size(), 3U);
    EXPECT_EQ(english->lookUp(L"a"), text(L"pack"));
    EXPECT_EQ(english->lookUp(L"b"), text(L"own"));
    EXPECT_EQ(english->lookUp(L"c"), text(L"own"));
    const Handle<const MessageTable> german = MessageFilesRegistry::getInstance().loadTable(folders, L"de");
    EXPECT_EQ(german->size(), 1U);
    EXPECT_EQ(MessageFilesRegistry::getInstance().loadTable(std::vector<FilePath>(), L"en")->size(), 0U);
    EXPECT_EQ(MessageFilesRegistry::getInstance().loadTable(folders, L"../en")->size(), 0U);
}

TEST(MessageFilesRegistry, WhatIsNotThereIsLeftOut)
{
    const TemporaryFolder folder;
    folder.write("en/second.xml", fileOf("<message key='b'>2</message>"));
    EXPECT_EQ(load(folder, L"en")->size(), 1U);
    EXPECT_EQ(load(folder, L"fr")->size(), 0U);
    folder.write("it", "a file in the place of a folder");
    EXPECT_EQ(load(folder, L"it")->size(), 0U);
}

TEST(MessageFilesRegistry, AFileThatCannotBeReadThrows)
{
    const TemporaryFolder folder;
    folder.write("en/first.xml", "<messages>");
    folder.write("de/first.xml/is-a-folder.xml", "");
    EXPECT_THROW(load(folder, L"en"), vel::XmlException);
    EXPECT_THROW(load(folder, L"de"), vel::XmlException);
}

TEST(MessageFilesRegistry, ALanguageIsAPlainName)
{
    const TemporaryFolder folder;
    const std::string longest(64, 'x');
    for (const std::string& name : {std::string("zh-Hant_TW"), std::string("x1"), longest, longest + "x"}) {
        folder.write("m/" + name + "/first.xml", fileOf("<message key='a'>1</message>"));
    }
    folder.write("m/first.xml", fileOf("<message key='a'>1</message>"));
    folder.write("first.xml", fileOf("<message key='a'>1</message>"));
    folder.write("m/en.x/first.xml", fileOf("<message key='a'>1</message>"));
    folder.write("m/en us/first.xml", fileOf("<message key='a'>1</message>"));
    folder.write("m/d\xC3\xA9/first.xml", fileOf("<message key='a'>1</message>"));

    const FilePath messages = folder.path().join(FilePath(String(L"m")));
    const auto sizeOf = [&](const String& language) {
        return MessageFilesRegistry::getInstance().loadTable(messages, language)->size();
    };
    const String longestWide(std::wstring(64, L'x'));
    for (const String& good : {String(L"zh-Hant_TW"), String(L"x1"), longestWide}) {
        EXPECT_EQ(sizeOf(good), 1U) << vel::toUtf8Lossy(good);
    }
    const String surrogate(std::wstring(1, static_cast<wchar_t>(0xD800)));
    for (const String& bad :
         {String(L""), String(L"."), String(L".."), String(L"../m/x1"), String(L"x1/"), String(L"/"), String(L"en.x"),
          String(L"en us"), String(L"d\u00E9"), String(L"x1\0", 3), surrogate, longestWide + L"x"}) {
        EXPECT_EQ(sizeOf(bad), 0U) << vel::toUtf8Lossy(bad);
    }
}

TEST(MessageFilesRegistry, NamesAreAddedFromManyThreads)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 50; ++round) {
                MessageFilesRegistry::getInstance().registerFile(L"thread" + std::to_wstring(round) + L".xml");
                (void)MessageFilesRegistry::getInstance().files();
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    const std::vector<String> files = MessageFilesRegistry::getInstance().files();
    EXPECT_EQ(files.size(), 52U);
    for (int round = 0; round < 50; ++round) {
        const String name(L"thread" + std::to_wstring(round) + L".xml");
        EXPECT_EQ(std::count(files.begin(), files.end(), name), 1);
    }
}

}  // namespace
