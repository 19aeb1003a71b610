#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace cli {

/// A line has no more bytes: a stream without line feeds is no reason to take all memory there is.
inline constexpr std::size_t kMostLineBytes = std::size_t{64} << 20;

/// Throws UsageError, which names the file and the line that has more.
[[noreturn]] void throwLineTooLong(const std::string& name, std::size_t line);

/// Standard input or a file, line by line. A line ends with a line feed, or with another separator, which is not part
/// of it; a carriage return is. The last line counts without a separator too, unless it is empty. Lines of any bytes,
/// and of at most kMostLineBytes.
class LineReader
{
public:
    /// `beforeWaiting` is called before each time that reading may have to wait.
    explicit LineReader(std::function<void()> beforeWaiting);
    /// Reads an open file, which stays open. `name` is what faults call it.
    LineReader(std::function<void()> beforeWaiting, int file, std::string name, char separator);

    /// Reads the next line; false at the end. Throws DataError when reading fails, and UsageError for a line that is
    /// too long.
    bool next(std::string& line);
    /// How many lines were read.
    std::size_t count() const noexcept { return m_nCount; }

private:
    bool readMore();
    void take(std::string& line, std::size_t length, std::size_t end);

    std::function<void()> m_tBeforeWaiting;
    int m_hFile;
    std::string m_sName;
    char m_cSeparator;
    std::string m_sBuffer;
    std::size_t m_nStart = 0;    // of the next line
    std::size_t m_nScanned = 0;  // no separator between m_nStart and here
    std::size_t m_nCount = 0;
};

}  // namespace cli
