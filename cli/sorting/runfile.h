#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sorting/linesource.h"

namespace cli {

/// Sorted lines in a temporary file without a name, which is gone with this object. It stands in TMPDIR, else in /tmp.
/// Written first, then read once. Throws DataError.
class RunFile
{
public:
    /// `bufferBytes`: what writing and reading hold in memory, or a line's text and key where those are longer.
    explicit RunFile(std::size_t bufferBytes);
    ~RunFile();
    RunFile(const RunFile&) = delete;
    RunFile& operator=(const RunFile&) = delete;

    void write(const KeyedLine& line);
    /// Bytes of the line that takes the most, with its key.
    std::size_t longestLine() const noexcept { return m_nLongest; }
    /// Reads from the start; this object must outlive the source.
    std::unique_ptr<LineSource> read();

private:
    void flush();

    int m_hFile;
    std::size_t m_nBufferBytes;
    std::size_t m_nLongest = 0;
    std::string m_sBuffer;
};

}  // namespace cli
