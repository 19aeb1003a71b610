#include "net/eventloop.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace server {

namespace {

constexpr int kEventsAtOnce = 64;

[[noreturn]] void throwSystemError(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

epoll_event eventFor(Watched* watched, Readiness readiness) noexcept
{
    epoll_event event{};
    event.events = (readiness & kReadable ? EPOLLIN : 0U) | (readiness & kWritable ? EPOLLOUT : 0U);
    event.data.ptr = watched;
    return event;
}

}  // namespace

EventLoop::EventLoop() : m_tEvents(epoll_create1(EPOLL_CLOEXEC)), m_tWake(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
    epoll_event event = eventFor(nullptr, kReadable);
    if (!m_tEvents.isOpen() || !m_tWake.isOpen() ||
        epoll_ctl(m_tEvents.get(), EPOLL_CTL_ADD, m_tWake.get(), &event) != 0) {
        throwSystemError("waiting for clients");
    }
}

void EventLoop::watch(int descriptor, Watched& watched, Readiness readiness)
{
    epoll_event event = eventFor(&watched, readiness);
    if (epoll_ctl(m_tEvents.get(), EPOLL_CTL_ADD, descriptor, &event) != 0) {
        throwSystemError("watching a client");
    }
}

void EventLoop::change(int descriptor, Watched& watched, Readiness readiness) noexcept
{
    epoll_event event = eventFor(&watched, readiness);
    epoll_ctl(m_tEvents.get(), EPOLL_CTL_MOD, descriptor, &event);
}

void EventLoop::forget(int descriptor) noexcept
{
    epoll_ctl(m_tEvents.get(), EPOLL_CTL_DEL, descriptor, nullptr);
}

void EventLoop::wait(std::chrono::milliseconds longest) noexcept
{
    epoll_event events[kEventsAtOnce];
    const int count = epoll_wait(m_tEvents.get(), events, kEventsAtOnce, static_cast<int>(longest.count()));
    for (int index = 0; index < count; ++index) {
        if (auto* const watched = static_cast<Watched*>(events[index].data.ptr)) {
            watched->onReady();
            continue;
        }
        std::uint64_t ignored = 0;
        [[maybe_unused]] const ssize_t got = read(m_tWake.get(), &ignored, sizeof ignored);
    }
}

void EventLoop::wake() noexcept
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t put = write(m_tWake.get(), &one, sizeof one);
}

}  // namespace server
