#include "textstream.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "failures.h"
#include "vel/core/utf8.h"

namespace cli {

namespace {

constexpr std::size_t kReadBytes = std::size_t{64} << 10;
constexpr std::size_t kMostBytesOfCharacter = 4;

}  // namespace

TextStream::TextStream(std::function<void()> beforeWaiting) : m_tBeforeWaiting(std::move(beforeWaiting))
{}

bool TextStream::next(std::wstring& text)
{
    text.clear();
    while (readMore()) {
        const std::size_t decoded = vel::appendUtf8AsWide(m_sBytes, text).value_or(m_sBytes.size());
        m_sBytes.erase(0, decoded);
        m_nDecoded += decoded;
        if (!text.empty()) {
            return true;
        }
        // The rest may be the begin of a character that the next read completes, unless it is too long for one.
        if (m_sBytes.size() >= kMostBytesOfCharacter) {
            refuse();
        }
    }
    if (!m_sBytes.empty()) {
        refuse();
    }
    return false;
}

void TextStream::refuse() const
{
    throw UsageError("standard input: invalid UTF-8 at byte offset " + std::to_string(m_nDecoded));
}

bool TextStream::readMore()
{
    m_tBeforeWaiting();
    const std::size_t held = m_sBytes.size();
    m_sBytes.resize(held + kReadBytes);
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, m_sBytes.data() + held, kReadBytes);
    } while (count < 0 && errno == EINTR);
    const int fault = errno;
    m_sBytes.resize(held + (count > 0 ? static_cast<std::size_t>(count) : 0));
    if (count < 0) {
        throw DataError(std::string("standard input cannot be read: ") + std::strerror(fault));
    }
    return count > 0;
}

}  // namespace cli
