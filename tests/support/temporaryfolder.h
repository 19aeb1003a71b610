#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "vel/core/filepath.h"
#include "vel/core/string.h"

namespace testsupport {

/// A new empty folder that goes with the object, with all that is in it.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "webi18n-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_tPath = name;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_tPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& native() const { return m_tPath; }
    vel::FilePath path() const { return wide(m_tPath); }

    /// Writes a file, making the folders above it; returns its path.
    vel::FilePath write(const std::string& relative, std::string_view bytes) const
    {
        const std::filesystem::path file = m_tPath / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream out(file, std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) {
            throw std::runtime_error("cannot write " + file.string());
        }
        return wide(file);
    }

private:
    static vel::FilePath wide(const std::filesystem::path& path)
    {
        return vel::FilePath(vel::stringFromUtf8(path.string()).value());
    }

    std::filesystem::path m_tPath;
};

}  // namespace testsupport
