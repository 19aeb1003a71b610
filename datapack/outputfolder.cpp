#include "outputfolder.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace datapack {
namespace {

[[noreturn]] void fail(const char* action, const std::filesystem::path& path, const std::error_code& reason)
{
    throw std::runtime_error(std::string("cannot ") + action + " " + path.string() + ": " + reason.message());
}

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

void createFolder(const std::filesystem::path& folder)
{
    std::error_code reason;
    std::filesystem::create_directories(folder, reason);
    if (reason) {
        fail("create the folder", folder, reason);
    }
    if (!std::filesystem::is_directory(folder)) {
        fail("write into", folder, std::make_error_code(std::errc::not_a_directory));
    }
}

void writeWhole(const std::filesystem::path& path, std::string_view content)
{
    errno = 0;
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    if (!stream) {
        const std::error_code reason = lastError();
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
        fail("write", path, reason);
    }
}

}  // namespace

OutputFolder::OutputFolder(const std::filesystem::path& folder) : m_sFolder(folder)
{
    createFolder(m_sFolder);
}

void OutputFolder::write(const std::filesystem::path& name, std::string_view content) const
{
    const std::filesystem::path path = m_sFolder / name;
    createFolder(path.parent_path());
    std::filesystem::path temporary = path;
    temporary += ".tmp";
    writeWhole(temporary, content);
    std::error_code reason;
    std::filesystem::rename(temporary, path, reason);
    if (reason) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        fail("write", path, reason);
    }
}

}  // namespace datapack
