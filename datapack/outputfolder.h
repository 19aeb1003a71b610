/// \file
/// The folder that the pack is written into.
#pragma once

#include <filesystem>
#include <string_view>

namespace datapack {

/// Writes whole files below one folder. A file is written under a temporary name and renamed, so a reader sees either
/// the old or the new one, never half of it.
class OutputFolder
{
public:
    /// Creates the folder, with those above it, when it is missing.
    /// \throws std::runtime_error that names the folder and the reason.
    explicit OutputFolder(const std::filesystem::path& folder);

    /// Writes `content` to the file `name` (a relative path; its folders are created).
    /// \throws std::runtime_error that names the file and the reason; the temporary file is removed then.
    void write(const std::filesystem::path& name, std::string_view content) const;

private:
    std::filesystem::path m_sFolder;
};

}  // namespace datapack
