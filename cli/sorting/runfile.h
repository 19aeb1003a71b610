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
    RunFile();
    ~RunFile();
    RunFile(const RunFile&) = delete;
    RunFile& operator=(const RunFile&) = delete;

    void write(const KeyedLine& line);
    /// Reads from the start; this object must outlive the source.
    std::unique_ptr<LineSource> read();

private:
    void flush();

    int m_hFile;
    std::string m_sBuffer;
};

}  // namespace cli
