#pragma once

#include <chrono>

#include "net/descriptor.h"

namespace server {

/// Who is told that a descriptor is ready.
class Watched
{
public:
    virtual void onReady() noexcept = 0;

protected:
    ~Watched() = default;
};

/// What a descriptor is watched for. Its end and its errors are told in any case.
enum Readiness : unsigned
{
    kReadable = 1,
    kWritable = 2
};

/// Waits until one of many descriptors is ready. It holds no memory of its own for them, so that nothing but watch()
/// can fail. One thread; wake() alone is for any.
class EventLoop
{
public:
    /// Throws std::system_error when the system has no descriptor left.
    EventLoop();

    /// Throws std::system_error when the system watches no more. `watched` must live until forget().
    void watch(int descriptor, Watched& watched, Readiness readiness);
    void change(int descriptor, Watched& watched, Readiness readiness) noexcept;
    void forget(int descriptor) noexcept;

    /// Tells those that are ready; returns when nothing was for so long, or when it was woken.
    void wait(std::chrono::milliseconds longest) noexcept;
    /// Ends the present or the next wait().
    void wake() noexcept;

private:
    Descriptor m_tEvents;
    Descriptor m_tWake;
};

}  // namespace server
