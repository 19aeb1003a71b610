#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "vel/core/string.h"

namespace testsupport {

/// A file that exists in memory only, with a path as long as the object lives: thousands of variants of a file are
/// loaded without touching a disk.
class MemoryFile
{
public:
    MemoryFile() : m_nDescriptor(memfd_create("webi18n", MFD_CLOEXEC))
    {
        if (m_nDescriptor < 0) {
            throw std::runtime_error("no file in memory");
        }
    }
    ~MemoryFile() { close(m_nDescriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    vel::String path() const { return vel::stringFromUtf8("/proc/self/fd/" + std::to_string(m_nDescriptor)).value(); }
    /// Replaces the contents; returns the path.
    vel::String write(std::string_view bytes) const
    {
        if (ftruncate(m_nDescriptor, 0) != 0 ||
            pwrite(m_nDescriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("cannot write the file in memory");
        }
        return path();
    }

private:
    int m_nDescriptor;
};

}  // namespace testsupport
