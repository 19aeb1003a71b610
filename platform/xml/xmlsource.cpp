#include "xmlsource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "vel/core/exception.h"
#include "vel/xml/xmlexception.h"

namespace vel::xml_details {

namespace {

/// The parser's buffer cannot be larger than 2^30 bytes, and UTF-16 grows by half when it becomes UTF-8.
constexpr std::size_t kMaxBytesEver = std::size_t{512} << 20;

class OpenFile
{
public:
    explicit OpenFile(int file) noexcept : m_hFile(file) {}
    ~OpenFile()
    {
        if (m_hFile >= 0) {
            ::close(m_hFile);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    int get() const noexcept { return m_hFile; }

private:
    int m_hFile;
};

/// Never waits: without O_NONBLOCK, opening a pipe that nobody writes to would.
int openForReading(const char* path) noexcept
{
    int file = -1;
    do {
        file = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    } while (file < 0 && errno == EINTR);
    return file;
}

/// Reads until `size` bytes are there or the file ends; -1 with errno on failure.
ssize_t readUpTo(int file, char* out, std::size_t size) noexcept
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(file, out + done, size - done);
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            return -1;
        }
        done += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

String reasonOf(int error)
{
    const char* const text = ::strerrordesc_np(error);
    return stringFromUtf8(text == nullptr ? "unknown error" : text).value_or(String());
}

}  // namespace

XmlSource::XmlSource(XML_Parser parser, const XmlLimits& limits, const String& name)
    : m_hParser(parser), m_sName(name), m_nMaxBytes(std::min(limits.m_nMaxBytes, kMaxBytesEver))
{}

void XmlSource::readFile(const FilePath& path)
{
    std::string native;
    if (appendWideAsUtf8(path.toString().view(), native) || native.find('\0') != std::string::npos) {
        fail(L"the path holds a character that no file's path can hold: check the path");
    }
    const OpenFile file(openForReading(native.c_str()));
    struct stat status = {};
    const int error = file.get() < 0 || ::fstat(file.get(), &status) != 0 ? errno : 0;
    if (error != 0) {
        fail(String(L"cannot open the file: ") + reasonOf(error).view() + L"; check the path and its permissions");
    }
    if (!S_ISREG(status.st_mode)) {
        fail(L"not a regular file: name an XML file, no folder, device or pipe");
    }
    const std::size_t size = static_cast<std::size_t>(status.st_size);
    checkSize(size);
    readAll(file.get(), size);
    decode();
}

void XmlSource::takeBytes(std::string_view bytes)
{
    checkSize(bytes.size());
    provideRoom(bytes.size());
    std::copy_n(bytes.data(), bytes.size(), m_pData);
    m_nSize = bytes.size();
    decode();
}

/// One byte more than expected is asked for: a file that has it is growing, or does not tell its size.
void XmlSource::readAll(int file, std::size_t expected)
{
    std::string early;
    for (std::size_t room = expected + 1;; room = std::min(room * 2, m_nMaxBytes + 1)) {
        provideRoom(room);
        std::copy_n(early.data(), early.size(), m_pData);
        const ssize_t count = readUpTo(file, m_pData + early.size(), room - early.size());
        const int error = count < 0 ? errno : 0;
        if (error != 0) {
            fail(String(L"cannot read the file: ") + reasonOf(error).view() + L"; check its disk");
        }
        m_nSize = early.size() + static_cast<std::size_t>(count);
        checkSize(m_nSize);
        if (m_nSize < room) {
            return;
        }
        early.assign(m_pData, m_nSize);
    }
}

void XmlSource::provideRoom(std::size_t size)
{
    m_pData = static_cast<char*>(XML_GetBuffer(m_hParser, static_cast<int>(size + kPlaceSlack)));
    if (m_pData == nullptr) {
        throw std::bad_alloc();
    }
}

void XmlSource::checkSize(std::size_t size) const
{
    if (size > m_nMaxBytes) {
        fail(String(L"larger than the limit of ") + decimalString(m_nMaxBytes) + L" bytes: split the file");
    }
}

void XmlSource::decode()
{
    m_eEncoding = detectEncoding(text());
    if (m_nSize == 0) {
        fail(L"the file is empty: an XML file has a root element");
    }
    if (const wchar_t* const refusal = refusalOf(m_eEncoding)) {
        throw XmlException(m_sName, 1, 1, refusal);
    }
    if (m_eEncoding == kUtf16LittleEndian || m_eEncoding == kUtf16BigEndian) {
        std::string utf8;
        if (const wchar_t* const fault = appendUtf16AsUtf8(text(), m_eEncoding, utf8)) {
            const XmlPlace place = placeOf(utf8, utf8.size());
            throw XmlException(m_sName, place.m_nLine, place.m_nColumn, fault);
        }
        provideRoom(utf8.size());
        std::copy_n(utf8.data(), utf8.size(), m_pData);
        m_nSize = utf8.size();
    }
    std::fill_n(m_pData + m_nSize, kPlaceSlack, '\0');
}

void XmlSource::fail(const String& problem) const
{
    throw XmlException(m_sName, 0, 0, problem);
}

}  // namespace vel::xml_details
