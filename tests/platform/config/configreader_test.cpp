#include "vel/config/configreader.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <thread>
#include <vector>

#include "failingallocator.h"
#include "printers.h"
#include "temporaryfolder.h"
#include "vel/xml/xmldocument.h"

namespace {

using testsupport::TemporaryFolder;
using vel::FilePath;
using vel::Handle;
using vel::makeHandle;
using vel::MemoryConfigReader;
using vel::String;
using vel::XmlConfigReader;
using vel::XmlDocument;

const String kNone(L"(none)");

Handle<XmlConfigReader> readerOf(std::string_view xml)
{
    return makeHandle<XmlConfigReader>(XmlDocument::parse(xml), FilePath(String(L"/etc/app")));
}

TEST(MemoryConfigReader, ReturnsWhatIsSetElseTheDefault)
{
    MemoryConfigReader reader;
    EXPECT_EQ(reader.getString(L"a/b", kNone), kNone);
    reader.set(L"a/b", L"1");
    EXPECT_EQ(reader.getString(L"a/b", kNone), L"1");
    reader.set(L"a/b", L"2");
    EXPECT_EQ(reader.getString(L"a/b", kNone), L"2");
    EXPECT_EQ(reader.getString(L"A/b", kNone), kNone);
    EXPECT_EQ(reader.getString(L"a", kNone), kNone);
    EXPECT_EQ(reader.getString(L"", kNone), kNone);
}

/// All that a host's reader has to implement.
class StringsOnlyReader final : public vel::ConfigReader
{
public:
    String getString(const String& key, const String& defaultValue) const override
    {
        return key == L"lists" ? L"lists/a.xml" : defaultValue;
    }
};

TEST(ConfigReader, WhoReadsStringsReadsPaths)
{
    const Handle<const vel::ConfigReader> reader = makeHandle<StringsOnlyReader>();
    EXPECT_EQ(reader->getFilePath(L"lists"), FilePath(String(L"lists/a.xml")));
    EXPECT_TRUE(reader->getFilePath(L"other").isEmpty());
}

TEST(MemoryConfigReader, PathsAreSeenFromTheWorkingFolder)
{
    MemoryConfigReader reader;
    EXPECT_TRUE(reader.getFilePath(L"file").isEmpty());
    reader.set(L"file", L"lists/a.xml");
    EXPECT_EQ(reader.getFilePath(L"file"), FilePath(String(L"lists/a.xml")));
    reader.set(L"file", L"");
    EXPECT_TRUE(reader.getFilePath(L"file").isEmpty());
}

TEST(MemoryConfigReader, AsksTheReaderBehindForWhatIsNotSet)
{
    const Handle<XmlConfigReader> behind = readerOf("<c><file>a.xml</file><x>1</x><y>2</y></c>");
    MemoryConfigReader reader(behind);
    EXPECT_EQ(reader.getString(L"x", kNone), L"1");
    EXPECT_EQ(reader.getFilePath(L"file"), FilePath(String(L"/etc/app/a.xml")));
    EXPECT_EQ(reader.getString(L"z", kNone), kNone);
    reader.set(L"x", L"3");
    reader.set(L"file", L"b.xml");
    EXPECT_EQ(reader.getString(L"x", kNone), L"3");
    EXPECT_EQ(reader.getString(L"y", kNone), L"2");
    EXPECT_EQ(reader.getFilePath(L"file"), FilePath(String(L"b.xml")));
}

TEST(MemoryConfigReader, AnEmptyValueHidesTheOneBehind)
{
    MemoryConfigReader reader(readerOf("<c><file>a.xml</file></c>"));
    reader.set(L"file", L"");
    EXPECT_EQ(reader.getString(L"file", kNone), L"");
    EXPECT_TRUE(reader.getFilePath(L"file").isEmpty());
}

struct Row
{
    const char* m_pXml;
    const wchar_t* m_pKey;
    const wchar_t* m_pValue;
};

const Row kRows[] = {
    {"<configuration><Localization><AllowedLocales> en-us </AllowedLocales></Localization></configuration>",
     L"Localization/AllowedLocales", L"en-us"},
    {"<configuration><Localization><AllowedLocales> en-us </AllowedLocales></Localization></configuration>",
     L"Localization", L"(none)"},
    {"<c><a>1</a></c>", L"a", L"1"},
    {"<other><a>1</a></other>", L"a", L"1"},  // the root's name is not examined
    {"<c><a>1</a></c>", L"c/a", L"(none)"},   // nor part of the key
    {"<c><a>1</a></c>", L"A", L"(none)"},
    {"<c><a>1</a></c>", L"/a", L"(none)"},
    {"<c><a>1</a></c>", L"", L"(none)"},
    {"<c>text</c>", L"", L"(none)"},
    {"<c><a/></c>", L"a", L""},  // there, and empty
    {"<c><a> \t\n</a></c>", L"a", L""},
    {"<c><a>1</a><a>2</a></c>", L"a", L"1"},  // the first one wins
    {"<c><a/><a>2</a></c>", L"a", L""},
    {"<c><a><b>1</b></a><a><b>2</b><d>3</d></a></c>", L"a/b", L"1"},
    {"<c><a><b>1</b></a><a><b>2</b><d>3</d></a></c>", L"a/d", L"3"},
    {"<c><a>text<b>1</b></a><a>2</a></c>", L"a", L"2"},  // one with children has no value
    {"<c><a><b><d>deep</d></b></a><e>after</e></c>", L"a/b/d", L"deep"},
    {"<c><a><b><d>deep</d></b></a><e>after</e></c>", L"e", L"after"},
    {"<c xmlns:p='urn:x'><p:a><p:b>1</p:b></p:a></c>", L"a/b", L"1"},  // local names
    {"<c><a>x &amp; y<!-- no --> z</a></c>", L"a", L"x & y z"},
    {"<c><a v='1'>2</a></c>", L"a", L"2"},
    {"<c/>", L"a", L"(none)"},
};

TEST(XmlConfigReader, ReadsValuesByPath)
{
    for (const Row& row : kRows) {
        EXPECT_EQ(readerOf(row.m_pXml)->getString(row.m_pKey, kNone), row.m_pValue) << row.m_pXml;
    }
}

TEST(XmlConfigReader, PathsAreSeenFromTheFilesFolder)
{
    const Handle<XmlConfigReader> reader = readerOf("<c><r> a/b.xml </r><abs>/x.xml</abs><e/></c>");
    EXPECT_EQ(reader->getFilePath(L"r"), FilePath(String(L"/etc/app/a/b.xml")));
    EXPECT_EQ(reader->getFilePath(L"abs"), FilePath(String(L"/x.xml")));
    EXPECT_TRUE(reader->getFilePath(L"e").isEmpty());
    EXPECT_TRUE(reader->getFilePath(L"absent").isEmpty());
}

TEST(XmlConfigReader, ReadsAFileAndKnowsItsFolder)
{
    const TemporaryFolder folder;
    const FilePath file = folder.write("conf/config.xml", "<c><list>l.xml</list></c>");
    const XmlConfigReader reader(file);
    EXPECT_EQ(reader.getString(L"list", kNone), L"l.xml");
    EXPECT_EQ(reader.getFilePath(L"list"), folder.path().join(FilePath(String(L"conf/l.xml"))));
}

TEST(XmlConfigReader, AFileThatCannotBeReadThrows)
{
    const TemporaryFolder folder;
    EXPECT_THROW(XmlConfigReader{folder.path().join(FilePath(String(L"absent.xml")))}, vel::XmlException);
    EXPECT_THROW(XmlConfigReader{folder.write("bad.xml", "<c><a></c>")}, vel::XmlException);
    EXPECT_THROW(XmlConfigReader{folder.write("empty.xml", "")}, vel::XmlException);
    const XmlDocument empty;
    EXPECT_THROW(XmlConfigReader(empty, FilePath()), vel::InvalidHandleException);
}

TEST(XmlConfigReader, AFileMayHaveOneMebibyteAndSixtyFourLevels)
{
    const TemporaryFolder folder;
    const std::size_t limit = std::size_t{1} << 20;
    const std::string frame = "<c><a>1</a></c>";
    EXPECT_NO_THROW(XmlConfigReader{folder.write("max.xml", frame + std::string(limit - frame.size(), '\n'))});
    EXPECT_THROW(XmlConfigReader{folder.write("over.xml", frame + std::string(limit - frame.size() + 1, '\n'))},
                 vel::XmlException);
    for (const std::size_t depth : {std::size_t{64}, std::size_t{65}}) {
        std::string xml;
        for (std::size_t i = 0; i < depth; ++i) {
            xml.append("<a>");
        }
        for (std::size_t i = 0; i < depth; ++i) {
            xml.append("</a>");
        }
        const FilePath file = folder.write("deep.xml", xml);
        if (depth == 64) {
            EXPECT_NO_THROW(XmlConfigReader{file});
        } else {
            EXPECT_THROW(XmlConfigReader{file}, vel::XmlException);
        }
    }
}

TEST(XmlConfigReader, KeysHaveAtMost256Characters)
{
    for (const std::size_t length : {std::size_t{255}, std::size_t{256}, std::size_t{257}}) {
        const std::string name(length - 2, 'n');
        const Handle<XmlConfigReader> reader = readerOf("<c><a><" + name + ">1</" + name + "></a><b>2</b></c>");
        const String key(std::wstring(L"a/") + std::wstring(name.begin(), name.end()));
        EXPECT_EQ(reader->getString(key, kNone), length <= 256 ? String(L"1") : kNone) << length;
        EXPECT_EQ(reader->getString(L"b", kNone), L"2");
    }
}

TEST(XmlConfigReader, NothingLeaksWhenMemoryRunsOut)
{
    const XmlDocument document = XmlDocument::parse(
        "<c><Localization><AllowedLocalesFile>a/long/path/to/the/lists.xml</AllowedLocalesFile>"
        "<AllowedLocales>en-us,en-gb,de-de</AllowedLocales></Localization></c>");
    const FilePath folder(String(L"/a/folder/with/a/long/name"));
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    bool failed = true;
    for (std::size_t nth = 0; failed; ++nth) {
        ASSERT_LT(nth, 1000U);
        const testsupport::FailingAllocations failing(nth);
        try {
            const XmlConfigReader reader(document, folder);
        } catch (const std::bad_alloc&) {}
        failed = failing.hasFailed();
    }
    EXPECT_EQ(testsupport::outstandingBlocks(), before);
}

TEST(ConfigReader, IsReadFromManyThreads)
{
    MemoryConfigReader reader(readerOf("<c><x>behind</x></c>"));
    reader.set(L"y", L"front");
    std::vector<int> right(8, 0);
    std::vector<std::thread> threads;
    for (int& count : right) {
        threads.emplace_back([&reader, &count] {
            for (int round = 0; round < 1000; ++round) {
                count += reader.getString(L"x", L"") == L"behind" && reader.getString(L"y", L"") == L"front" ? 1 : 0;
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(right, std::vector<int>(8, 1000));
}

}  // namespace
