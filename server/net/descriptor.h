#pragma once

#include <unistd.h>

#include <utility>

namespace server {

/// Owns a file descriptor and closes it; -1 is none. One thread at a time.
class Descriptor
{
public:
    explicit Descriptor(int descriptor = -1) noexcept : m_nDescriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_nDescriptor(std::exchange(other.m_nDescriptor, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_nDescriptor, other.m_nDescriptor);
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const noexcept { return m_nDescriptor; }
    bool isOpen() const noexcept { return m_nDescriptor >= 0; }
    void reset() noexcept
    {
        if (isOpen()) {
            ::close(std::exchange(m_nDescriptor, -1));
        }
    }

private:
    int m_nDescriptor;
};

}  // namespace server
