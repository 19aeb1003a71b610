// The generator as a program: the same bytes every time, clear failures.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <map>

#include "plainxml.h"

namespace shipped {
namespace {

class Generator : public testing::Test
{
protected:
    Generator()
    {
        std::string name = (std::filesystem::temp_directory_path() / "webi18n-datapack-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_tFolder = name;
    }

    ~Generator() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_tFolder, ignored);
    }

    /// Runs the generator in the temporary folder; returns its exit code.
    int run(const std::string& arguments) const
    {
        const std::string command = "cd '" + m_tFolder.string() + "' && '" + WEBI18N_DATAPACK_PROGRAM + "' " +
                                    arguments + " >out.txt 2>error.txt";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string text(const std::string& file) const { return readBytes((m_tFolder / file).string()); }

    static std::map<std::string, std::string> files(const std::filesystem::path& folder)
    {
        std::map<std::string, std::string> result;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file()) {
                const std::string name = entry.path().lexically_relative(folder).string();
                result[name] = readBytes(entry.path().string());
            }
        }
        return result;
    }

    std::filesystem::path m_tFolder;
};

TEST_F(Generator, writesTheSameBytesEveryTime)
{
    ASSERT_EQ(run("first"), 0) << text("error.txt");
    ASSERT_EQ(run("second"), 0) << text("error.txt");
    const auto first = files(m_tFolder / "first");
    EXPECT_GE(first.size(), 29u);
    EXPECT_TRUE(first == files(m_tFolder / "second"));
    for (const auto& [name, bytes] : first) {
        EXPECT_EQ(readBytes(std::string(WEBI18N_PACK_DIR) + "/" + name) == bytes, true) << name;
    }
}

TEST_F(Generator, writesUtf8WithoutMarkAndWithLineFeeds)
{
    ASSERT_EQ(run("pack"), 0) << text("error.txt");
    for (const auto& [name, bytes] : files(m_tFolder / "pack")) {
        EXPECT_EQ(bytes.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", 0), 0u) << name;
        EXPECT_EQ(bytes.find('\r'), std::string::npos) << name;
        EXPECT_EQ(bytes.find(".tmp"), std::string::npos) << name;
        EXPECT_EQ(std::filesystem::path(name).extension(), ".xml");
    }
}

TEST_F(Generator, printsItsNumbers)
{
    ASSERT_EQ(run("pack"), 0) << text("error.txt");
    for (const char* number : {"locales ", "rules ", "currencies ", "messages ", "languages ", "seconds "}) {
        EXPECT_NE(text("out.txt").find(number), std::string::npos) << number;
    }
    EXPECT_EQ(text("error.txt"), "");
}

TEST_F(Generator, refusesAFileInPlaceOfTheFolder)
{
    ASSERT_EQ(std::system(("touch '" + (m_tFolder / "taken").string() + "'").c_str()), 0);
    EXPECT_EQ(run("taken"), 1);
    EXPECT_NE(text("error.txt").find("taken"), std::string::npos) << text("error.txt");
    EXPECT_EQ(run("taken/below"), 1);
    EXPECT_NE(text("error.txt").find("taken"), std::string::npos) << text("error.txt");
}

TEST_F(Generator, reportsAFileThatCannotBeReplaced)
{
    std::filesystem::create_directories(m_tFolder / "pack" / "localelists.xml" / "inside");
    EXPECT_EQ(run("pack"), 1);
    EXPECT_NE(text("error.txt").find("localelists.xml"), std::string::npos) << text("error.txt");
    EXPECT_FALSE(std::filesystem::exists(m_tFolder / "pack" / "localelists.xml.tmp"));
}

TEST_F(Generator, refusesAFolderThatCannotBeMade)
{
    EXPECT_EQ(run("/proc/webi18n-pack"), 1);
    EXPECT_NE(text("error.txt").find("/proc/webi18n-pack"), std::string::npos) << text("error.txt");
}

TEST_F(Generator, wantsExactlyOneArgument)
{
    EXPECT_EQ(run(""), 2);
    EXPECT_EQ(run("one two"), 2);
    EXPECT_NE(text("error.txt").find("usage"), std::string::npos);
}

}  // namespace
}  // namespace shipped
