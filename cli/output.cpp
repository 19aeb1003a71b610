#include "output.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "failures.h"

namespace cli {

namespace {

constexpr std::size_t kBufferBytes = std::size_t{64} << 10;

}  // namespace

void Output::answer(const Json& json, const Facts& facts)
{
    if (m_bJson) {
        row(json, {});
        return;
    }
    const char* separator = "";
    for (const auto& [name, value] : facts) {
        m_sBuffer.append(separator).append(name).append(": ").append(value);
        separator = m_bBatch ? "\t" : "\n";
    }
    endLine();
}

void Output::row(const Json& json, std::string_view line)
{
    m_bJson ? m_sBuffer += json.dump() : m_sBuffer += line;
    endLine();
}

void Output::endLine()
{
    m_sBuffer += '\n';
    if (m_sBuffer.size() >= kBufferBytes) {
        flush();
    }
}

void Output::text(std::string_view text)
{
    if (text.size() >= kBufferBytes) {
        flush();
        write(text);
        return;
    }
    m_sBuffer += text;
    if (m_sBuffer.size() >= kBufferBytes) {
        flush();
    }
}

void Output::flush()
{
    write(m_sBuffer);
    m_sBuffer.clear();
}

void Output::write(std::string_view text)
{
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE) {
            throw BrokenPipe();
        } else if (errno != EINTR) {
            throw DataError(std::string("standard output cannot be written: ") + std::strerror(errno));
        }
    }
}

}  // namespace cli
