#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace cli {

/// Standard input, line by line. A line ends with a line feed, which is not part of it; a carriage return is. The last
/// line counts without a line feed too, unless it is empty. Lines of any length and with any bytes.
class LineReader
{
public:
    /// `beforeWaiting` is called before each time that reading may have to wait.
    explicit LineReader(std::function<void()> beforeWaiting);

    /// Reads the next line; false at the end. Throws DataError when reading fails.
    bool next(std::string& line);
    /// How many lines were read.
    std::size_t count() const noexcept { return m_nCount; }

private:
    bool readMore();
    void take(std::string& line, std::size_t length, std::size_t end);

    std::function<void()> m_tBeforeWaiting;
    std::string m_sBuffer;
    std::size_t m_nStart = 0;    // of the next line
    std::size_t m_nScanned = 0;  // no line feed between m_nStart and here
    std::size_t m_nCount = 0;
};

}  // namespace cli
