#include "sorting/inputfiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "failures.h"

namespace cli {

InputFiles::InputFiles(std::vector<std::string> names) : m_tNames(std::move(names))
{
    if (m_tNames.empty()) {
        m_tNames.emplace_back("-");
    }
}

InputFiles::~InputFiles()
{
    close();
}

void InputFiles::close() noexcept
{
    if (m_hFile > STDIN_FILENO) {
        ::close(m_hFile);
    }
    m_hFile = -1;
}

bool InputFiles::openNext()
{
    close();
    if (m_nNext == m_tNames.size()) {
        return false;
    }
    const std::string& name = m_tNames[m_nNext++];
    m_sName = name == "-" ? "standard input" : name;
    m_hFile = name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_hFile < 0) {
        throw DataError(m_sName + ": cannot be opened: " + std::strerror(errno));
    }
    return true;
}

std::size_t InputFiles::read(char* out, std::size_t size)
{
    ssize_t count = 0;
    do {
        count = ::read(m_hFile, out, size);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw DataError(m_sName + ": cannot be read: " + std::strerror(errno));
    }
    return static_cast<std::size_t>(count);
}

}  // namespace cli
