#include "sorting/runfile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "failures.h"

namespace cli {

namespace {

/// What stands before a line's key and text.
struct Lengths
{
    std::uint64_t m_nKey;
    std::uint64_t m_nText;
};

[[noreturn]] void throwFault(const char* what)
{
    throw DataError(std::string("a temporary file cannot be ") + what + ": " + std::strerror(errno));
}

class RunSource final : public LineSource
{
public:
    RunSource(int file, std::size_t bufferBytes) : m_hFile(file), m_nBufferBytes(bufferBytes) {}

    bool next() override
    {
        Lengths lengths{};
        if (!hold(sizeof lengths)) {
            return false;
        }
        std::memcpy(&lengths, m_sBuffer.data() + m_nStart, sizeof lengths);
        m_nStart += sizeof lengths;
        if (!hold(lengths.m_nKey + lengths.m_nText)) {
            errno = EIO;
            throwFault("read");
        }
        const std::string_view bytes(m_sBuffer.data() + m_nStart, lengths.m_nKey + lengths.m_nText);
        m_tLine = makeKeyedLine(bytes.substr(0, lengths.m_nKey), bytes.substr(lengths.m_nKey));
        m_nStart += bytes.size();
        return true;
    }

private:
    /// Whether so many bytes are there; they are in the buffer then.
    bool hold(std::size_t count)
    {
        while (m_sBuffer.size() - m_nStart < count) {
            m_sBuffer.erase(0, m_nStart);
            m_nStart = 0;
            const std::size_t held = m_sBuffer.size();
            m_sBuffer.resize(std::max(count, m_nBufferBytes));
            // By place: the file of a run is not shared, but its position is with the writer.
            const ssize_t got = ::pread(m_hFile, m_sBuffer.data() + held, m_sBuffer.size() - held, m_nPlace);
            if (got < 0 && errno != EINTR) {
                throwFault("read");
            }
            m_sBuffer.resize(held + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
            m_nPlace += std::max<ssize_t>(got, 0);
            if (got == 0) {
                return false;
            }
        }
        return true;
    }

    int m_hFile;
    std::size_t m_nBufferBytes;
    off_t m_nPlace = 0;
    std::string m_sBuffer;
    std::size_t m_nStart = 0;
};

int makeFile()
{
    const char* folder = std::getenv("TMPDIR");
    std::string name = std::string(folder == nullptr || *folder == '\0' ? "/tmp" : folder) + "/webi18n-sort-XXXXXX";
    const int file = ::mkostemp(name.data(), O_CLOEXEC);
    if (file < 0) {
        throw DataError(name + ": a temporary file cannot be made: " + std::strerror(errno));
    }
    ::unlink(name.c_str());
    return file;
}

}  // namespace

RunFile::RunFile(std::size_t bufferBytes) : m_hFile(makeFile()), m_nBufferBytes(bufferBytes)
{}

RunFile::~RunFile()
{
    ::close(m_hFile);
}

void RunFile::write(const KeyedLine& line)
{
    const Lengths lengths = {line.m_sKey.size(), line.m_sText.size()};
    m_sBuffer.append(reinterpret_cast<const char*>(&lengths), sizeof lengths);
    m_sBuffer.append(line.m_sKey).append(line.m_sText);
    m_nLongest = std::max(m_nLongest, sizeof lengths + line.m_sKey.size() + line.m_sText.size());
    if (m_sBuffer.size() >= m_nBufferBytes) {
        flush();
    }
}

void RunFile::flush()
{
    std::string_view rest = m_sBuffer;
    while (!rest.empty()) {
        const ssize_t written = ::write(m_hFile, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) {
            throwFault("written");
        }
        rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    m_sBuffer.clear();
}

std::unique_ptr<LineSource> RunFile::read()
{
    flush();
    m_sBuffer = std::string();
    return std::make_unique<RunSource>(m_hFile, m_nBufferBytes);
}

}  // namespace cli
