#include <fcntl.h>
#include <sys/stat.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The peer of `webi18n sort`: what one writes on ICU for the same work. All lines are read, each gets its key once, and
// the keys are compared as bytes.

namespace {

constexpr std::size_t kKeyBlockBytes = std::size_t{1} << 20;
constexpr std::size_t kOutputBytes = std::size_t{64} << 10;

[[noreturn]] void fail(const std::string& what)
{
    throw std::runtime_error(what);
}

/// A file's text.
class Text
{
public:
    explicit Text(const char* name)
    {
        const int file = open(name, O_RDONLY | O_CLOEXEC);
        struct stat facts
        {};
        if (file < 0 || fstat(file, &facts) != 0) {
            fail(std::string(name) + ": cannot be opened");
        }
        const auto size = static_cast<std::size_t>(facts.st_size);
        m_pBytes.reset(new char[size]);
        for (ssize_t got = 1; m_nSize < size && got > 0;) {
            got = read(file, m_pBytes.get() + m_nSize, size - m_nSize);
            m_nSize += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
        }
        close(file);
        if (m_nSize != size) {
            fail(std::string(name) + ": cannot be read");
        }
    }

    /// Without their line feeds.
    std::vector<std::string_view> lines() const
    {
        std::vector<std::string_view> lines;
        lines.reserve(static_cast<std::size_t>(std::count(m_pBytes.get(), m_pBytes.get() + m_nSize, '\n')) + 1);
        const char* const end = m_pBytes.get() + m_nSize;
        for (const char* begin = m_pBytes.get(); begin != end;) {
            const void* const feed = std::memchr(begin, '\n', static_cast<std::size_t>(end - begin));
            const char* const stop = feed != nullptr ? static_cast<const char*>(feed) : end;
            lines.emplace_back(begin, static_cast<std::size_t>(stop - begin));
            begin = feed != nullptr ? stop + 1 : end;
        }
        return lines;
    }

private:
    std::unique_ptr<char[]> m_pBytes;
    std::size_t m_nSize = 0;
};

/// Keys in blocks that stay where they are.
class Keys
{
public:
    explicit Keys(const char* locale) : m_pCollator(ucol_open(locale, &m_nStatus))
    {
        if (U_FAILURE(m_nStatus)) {
            fail(std::string(locale) + ": " + u_errorName(m_nStatus));
        }
    }
    Keys(const Keys&) = delete;
    Keys& operator=(const Keys&) = delete;
    ~Keys() { ucol_close(m_pCollator); }

    std::string_view add(std::string_view line)
    {
        const std::u16string_view wide = widen(line);
        std::size_t size = makeKey(wide);
        if (size > m_nRoom) {
            m_nRoom = std::max(size, kKeyBlockBytes);
            m_tBlocks.emplace_back(new std::uint8_t[m_nRoom]);
            m_pNext = m_tBlocks.back().get();
            size = makeKey(wide);
        }
        const std::string_view key(reinterpret_cast<const char*>(m_pNext), size);
        m_pNext += size;
        m_nRoom -= size;
        return key;
    }

private:
    std::u16string_view widen(std::string_view line)
    {
        if (m_tWide.size() < line.size()) {
            m_tWide.resize(2 * line.size());
        }
        int32_t length = 0;
        u_strFromUTF8(m_tWide.data(), static_cast<int32_t>(m_tWide.size()), &length, line.data(),
                      static_cast<int32_t>(line.size()), &m_nStatus);
        if (U_FAILURE(m_nStatus)) {
            fail("a line is no UTF-8");
        }
        return {m_tWide.data(), static_cast<std::size_t>(length)};
    }

    /// Into the room that is left; returns how much is needed.
    std::size_t makeKey(std::u16string_view text)
    {
        return static_cast<std::size_t>(ucol_getSortKey(m_pCollator, text.data(), static_cast<int32_t>(text.size()),
                                                        m_pNext, static_cast<int32_t>(m_nRoom)));
    }

    UErrorCode m_nStatus = U_ZERO_ERROR;
    UCollator* m_pCollator;
    std::vector<char16_t> m_tWide = std::vector<char16_t>(1024);
    std::vector<std::unique_ptr<std::uint8_t[]>> m_tBlocks;
    std::uint8_t* m_pNext = nullptr;
    std::size_t m_nRoom = 0;
};

struct Entry
{
    std::string_view m_sKey;  ///< ends with the zero byte that ICU's keys end with, so that none begins another
    std::string_view m_sLine;

    bool operator<(const Entry& other) const
    {
        const int order = std::memcmp(m_sKey.data(), other.m_sKey.data(), std::min(m_sKey.size(), other.m_sKey.size()));
        return order != 0 ? order < 0 : m_sLine.data() < other.m_sLine.data();  // lines lie in the order of the input
    }
};

void writeAll(const std::string& bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = write(STDOUT_FILENO, bytes.data() + done, bytes.size() - done);
        if (written < 0) {
            fail("standard output cannot be written");
        }
        done += static_cast<std::size_t>(written);
    }
}

void writeLines(const std::vector<Entry>& entries)
{
    std::string buffer;
    for (const Entry& each : entries) {
        buffer.append(each.m_sLine) += '\n';
        if (buffer.size() >= kOutputBytes) {
            writeAll(buffer);
            buffer.clear();
        }
    }
    writeAll(buffer);
}

void sortFile(const char* locale, const char* file)
{
    const Text text(file);
    Keys keys(locale);
    const std::vector<std::string_view> lines = text.lines();
    std::vector<Entry> entries;
    entries.reserve(lines.size());
    for (const std::string_view line : lines) {
        entries.push_back({keys.add(line), line});
    }
    std::sort(entries.begin(), entries.end());
    writeLines(entries);
}

}  // namespace

// Writes the lines of a file in the order of a locale: icusort LOCALE FILE
int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("usage: icusort LOCALE FILE\n", stderr);
        return 2;
    }
    try {
        sortFile(arguments[1], arguments[2]);
        return 0;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "icusort: %s\n", fault.what());
        return 1;
    }
}
