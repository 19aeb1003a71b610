#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "documentsupport.h"
#include "temporaryfolder.h"

namespace {

using testsupport::TemporaryFolder;
using vel::FilePath;
using vel::String;
using vel::XmlDocument;
using vel::XmlException;

/// The error's message after the file's name.
std::string messageOf(const FilePath& file, const vel::XmlLimits& limits = {})
{
    try {
        XmlDocument::load(file, limits);
    } catch (const XmlException& error) {
        EXPECT_EQ(error.file(), file.toString());
        const std::string message = error.what();
        const std::string name = vel::toUtf8Lossy(file.toString().view());
        EXPECT_EQ(message.substr(0, name.size()), name);
        return message.substr(name.size());
    }
    return "";
}

constexpr const char* kNotRegular = ":0:0: error: not a regular file: name an XML file, no folder, device or pipe";

bool cannotOpen(const std::string& message)
{
    return message.starts_with(":0:0: error: cannot open the file: ") &&
           message.ends_with("; check the path and its permissions");
}

TEST(XmlFile, LoadsWithItsNameInAnyScript)
{
    const TemporaryFolder folder;
    const FilePath file = folder.write("\xC3\xA9 \xE2\x82\xAC 100%.xml", "<a>\n<b/>1</a>");
    const XmlDocument document = XmlDocument::load(file);
    EXPECT_EQ(document.root().innerText(), L"\n1");
    EXPECT_EQ(document.root().firstChild()->line(), 2U);
}

TEST(XmlFile, FaultsNameFileLineAndColumn)
{
    const TemporaryFolder folder;
    EXPECT_EQ(messageOf(folder.write("a.xml", "<a>\n <b></a>")),
              ":2:5: error: this is not the end tag of <b>, which starts in line 2: correct one of the two");
}

TEST(XmlFile, EmptyOneIsRefused)
{
    const TemporaryFolder folder;
    EXPECT_EQ(messageOf(folder.write("a.xml", "")), ":0:0: error: the file is empty: an XML file has a root element");
}

TEST(XmlFile, MissingOneIsRefused)
{
    const TemporaryFolder folder;
    EXPECT_PRED1(cannotOpen, messageOf(folder.path().join(FilePath(L"no.xml"))));
    EXPECT_PRED1(cannotOpen, messageOf(folder.path().join(FilePath(L"no/no.xml"))));
    EXPECT_PRED1(cannotOpen, messageOf(FilePath()));
}

TEST(XmlFile, PathsThatCannotBeOpenedAreRefused)
{
    const TemporaryFolder folder;
    const FilePath file = folder.write("a.xml", "<a/>");
    EXPECT_PRED1(cannotOpen, messageOf(file.join(FilePath(L"below"))));
    EXPECT_PRED1(cannotOpen, messageOf(folder.path().join(FilePath(String(std::wstring(5000, L'x'))))));
    std::filesystem::create_symlink("loop", folder.native() / "loop");
    EXPECT_PRED1(cannotOpen, messageOf(folder.path().join(FilePath(L"loop"))));
}

TEST(XmlFile, PathsThatNoFileHasAreRefused)
{
    const std::wstring zero(L"/tmp/a\0b", 8);
    const std::wstring surrogate(L"/tmp/\xD800", 6);
    EXPECT_EQ(messageOf(FilePath(String(std::wstring_view(surrogate)))).substr(0, 12), ":0:0: error:");
    EXPECT_THROW(XmlDocument::load(FilePath(String(std::wstring_view(zero)))), XmlException);
}

/// The superuser reads everything: while this lives, the process acts for another user.
class OtherUser
{
public:
    OtherUser() : m_bIsSet(::geteuid() != 0 || ::seteuid(65534) == 0) {}
    ~OtherUser()
    {
        if (::geteuid() != ::getuid() && ::seteuid(::getuid()) != 0) {
            ADD_FAILURE() << "the user is not back";
        }
    }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;
    bool isSet() const { return m_bIsSet; }

private:
    bool m_bIsSet;
};

TEST(XmlFile, UnreadableOneIsRefused)
{
    const TemporaryFolder folder;
    const FilePath file = folder.write("a.xml", "<a/>");
    ASSERT_EQ(::chmod(file.toNative().c_str(), 0), 0);
    const OtherUser user;
    if (!user.isSet()) {
        GTEST_SKIP() << "the superuser reads everything";
    }
    EXPECT_PRED1(cannotOpen, messageOf(file));
}

TEST(XmlFile, FoldersDevicesAndSocketsAreRefused)
{
    const TemporaryFolder folder;
    EXPECT_EQ(messageOf(folder.path()), kNotRegular);
    EXPECT_EQ(messageOf(FilePath(L"/dev/zero")), kNotRegular);
    EXPECT_EQ(messageOf(FilePath(L"/dev/null")), kNotRegular);

    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = (folder.native() / "socket").string();
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    EXPECT_PRED1(cannotOpen, messageOf(folder.path().join(FilePath(L"socket"))));
    ::close(socket);
}

TEST(XmlFile, PipesAreRefusedWithoutWaiting)
{
    const TemporaryFolder folder;
    const std::string path = (folder.native() / "pipe").string();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(messageOf(folder.path().join(FilePath(L"pipe"))), kNotRegular);
}

TEST(XmlFile, LinksAreFollowed)
{
    const TemporaryFolder folder;
    folder.write("a.xml", "<a>1</a>");
    std::filesystem::create_symlink("a.xml", folder.native() / "link.xml");
    EXPECT_EQ(XmlDocument::load(folder.path().join(FilePath(L"link.xml"))).root().innerText(), L"1");
}

/// While it lives, the calling thread's name file, which claims to be 0 bytes long, holds `text` (at most 15 bytes) and
/// a line feed: a file that has grown since its size was asked for.
class GrowingFile
{
public:
    explicit GrowingFile(const char* text)
    {
        pthread_getname_np(pthread_self(), m_aBefore, sizeof(m_aBefore));
        pthread_setname_np(pthread_self(), text);
    }
    ~GrowingFile() { pthread_setname_np(pthread_self(), m_aBefore); }
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;
    static FilePath path() { return FilePath(L"/proc/thread-self/comm"); }

private:
    char m_aBefore[16] = {};
};

TEST(XmlFile, LargerThanItsSizeSaidIsReadToItsEnd)
{
    const GrowingFile file("<a>12345</a>");
    EXPECT_EQ(XmlDocument::load(GrowingFile::path()).root().innerText(), L"12345");
}

TEST(XmlFile, LimitHoldsForWhatIsRead)
{
    const GrowingFile file("<a>12345</a>");  // and a line feed: 13 bytes
    for (const std::size_t limit : {0U, 1U, 11U, 12U}) {
        vel::XmlLimits limits;
        limits.m_nMaxBytes = limit;
        EXPECT_EQ(messageOf(GrowingFile::path(), limits),
                  ":0:0: error: larger than the limit of " + std::to_string(limit) + " bytes: split the file");
    }
    for (const std::size_t limit : {13U, 14U, 15U}) {
        vel::XmlLimits limits;
        limits.m_nMaxBytes = limit;
        EXPECT_EQ(messageOf(GrowingFile::path(), limits), "");
    }
}

TEST(XmlFile, ReadErrorsAreTold)
{
    // A regular file that opens but has nothing to read at its start.
    const std::string message = messageOf(FilePath(L"/proc/self/mem"));
    EXPECT_TRUE(message.starts_with(":0:0: error: cannot read the file: ")) << message;
}

TEST(XmlFile, NoDescriptorStaysOpen)
{
    const TemporaryFolder folder;
    const FilePath good = folder.write("good.xml", "<a/>");
    const FilePath bad = folder.write("bad.xml", "<a>");
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = openFiles();
    for (int i = 0; i < 10; ++i) {
        XmlDocument::load(good);
        EXPECT_NE(messageOf(bad), "");
        EXPECT_NE(messageOf(folder.path()), "");
    }
    EXPECT_EQ(openFiles(), before);
}

}  // namespace
