#include "lines.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "failures.h"

namespace cli {

namespace {

constexpr std::size_t kReadBytes = std::size_t{64} << 10;

}  // namespace

void throwLineTooLong(const std::string& name, std::size_t line)
{
    throw UsageError(name + ", line " + std::to_string(line) + ": longer than " + std::to_string(kMostLineBytes) +
                     " bytes");
}

LineReader::LineReader(std::function<void()> beforeWaiting)
    : LineReader(std::move(beforeWaiting), STDIN_FILENO, "standard input", '\n')
{}

LineReader::LineReader(std::function<void()> beforeWaiting, int file, std::string name, char separator)
    : m_tBeforeWaiting(std::move(beforeWaiting)), m_hFile(file), m_sName(std::move(name)), m_cSeparator(separator)
{}

bool LineReader::next(std::string& line)
{
    for (;;) {
        if (const std::size_t end = m_sBuffer.find(m_cSeparator, m_nScanned); end != std::string::npos) {
            take(line, end - m_nStart, end + 1);
            return true;
        }
        m_nScanned = m_sBuffer.size();
        if (m_nScanned - m_nStart > kMostLineBytes) {
            throwLineTooLong(m_sName, m_nCount + 1);
        }
        if (!readMore()) {
            break;
        }
    }
    if (m_nStart == m_sBuffer.size()) {
        return false;
    }
    take(line, m_sBuffer.size() - m_nStart, m_sBuffer.size());
    return true;
}

void LineReader::take(std::string& line, std::size_t length, std::size_t end)
{
    if (length > kMostLineBytes) {
        throwLineTooLong(m_sName, m_nCount + 1);
    }
    line.assign(m_sBuffer, m_nStart, length);
    m_nStart = m_nScanned = end;
    ++m_nCount;
}

bool LineReader::readMore()
{
    m_tBeforeWaiting();
    m_sBuffer.erase(0, m_nStart);
    m_nScanned -= m_nStart;
    m_nStart = 0;
    const std::size_t held = m_sBuffer.size();
    m_sBuffer.resize(held + kReadBytes);
    ssize_t count = 0;
    do {
        count = ::read(m_hFile, m_sBuffer.data() + held, kReadBytes);
    } while (count < 0 && errno == EINTR);
    const int fault = errno;
    m_sBuffer.resize(held + (count > 0 ? static_cast<std::size_t>(count) : 0));
    if (count < 0) {
        throw DataError(m_sName + " cannot be read: " + std::strerror(fault));
    }
    return count > 0;
}

}  // namespace cli
