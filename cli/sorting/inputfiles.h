#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

/// The files that a subcommand reads one after the other, or standard input when there are none; "-" is standard input
/// too.
class InputFiles
{
public:
    explicit InputFiles(std::vector<std::string> names);
    ~InputFiles();
    InputFiles(const InputFiles&) = delete;
    InputFiles& operator=(const InputFiles&) = delete;

    /// Opens the next file; false when there is none. Throws DataError, which names it.
    bool openNext();
    int file() const noexcept { return m_hFile; }
    /// What faults call the open file.
    const std::string& name() const noexcept { return m_sName; }
    /// Reads what is there, up to `size` bytes; 0 at the end of the file. Throws DataError.
    std::size_t read(char* out, std::size_t size);

private:
    void close() noexcept;

    std::vector<std::string> m_tNames;
    std::size_t m_nNext = 0;
    int m_hFile = -1;
    std::string m_sName;
};

}  // namespace cli
