#include "logqueue.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <string>
#include <utility>

namespace server {

namespace {

constexpr std::chrono::milliseconds kLastTime{500};

/// Whether all could be written; waits as long as the descriptor makes it wait.
bool writeAll(int descriptor, std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

}  // namespace

struct LogQueue::State
{
    State(int descriptor, std::size_t mostBytes) : m_nDescriptor(descriptor), m_nMostBytes(mostBytes)
    {
        m_sWaiting.reserve(mostBytes);
        m_sLeaving.reserve(mostBytes);
    }

    void writeLines() noexcept;

    const int m_nDescriptor;
    const std::size_t m_nMostBytes;
    std::atomic<std::uint64_t> m_nDropped = 0;
    std::mutex m_tMutex;  // of what follows
    std::condition_variable m_tSignal;
    std::condition_variable m_tDoneSignal;
    std::string m_sWaiting;
    std::uint64_t m_nWaiting = 0;  // lines
    bool m_bEnding = false;
    bool m_bDone = false;
    std::string m_sLeaving;  // the thread's
};

void LogQueue::State::writeLines() noexcept
{
    std::unique_lock<std::mutex> lock(m_tMutex);
    while (!m_bEnding || !m_sWaiting.empty()) {
        m_tSignal.wait(lock, [this] { return m_bEnding || !m_sWaiting.empty(); });
        m_sLeaving.swap(m_sWaiting);
        const std::uint64_t lines = std::exchange(m_nWaiting, 0);
        lock.unlock();
        if (!writeAll(m_nDescriptor, m_sLeaving)) {
            m_nDropped += lines;
        }
        m_sLeaving.clear();
        lock.lock();
    }
    m_bDone = true;
    m_tDoneSignal.notify_all();
}

LogQueue::LogQueue(int descriptor, std::size_t mostBytes) : m_pState(std::make_shared<State>(descriptor, mostBytes))
{
    // Signals are for the threads that wait for them.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_tThread = std::thread([state = m_pState] { state->writeLines(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

LogQueue::~LogQueue()
{
    std::unique_lock<std::mutex> lock(m_pState->m_tMutex);
    m_pState->m_bEnding = true;
    m_pState->m_tSignal.notify_all();
    const bool isDone = m_pState->m_tDoneSignal.wait_for(lock, kLastTime, [this] { return m_pState->m_bDone; });
    lock.unlock();
    isDone ? m_tThread.join() : m_tThread.detach();
}

void LogQueue::write(std::string_view line) noexcept
{
    const std::lock_guard<std::mutex> lock(m_pState->m_tMutex);
    if (m_pState->m_sWaiting.size() + line.size() > m_pState->m_nMostBytes) {
        drop();
        return;
    }
    m_pState->m_sWaiting += line;  // there is room for it
    ++m_pState->m_nWaiting;
    m_pState->m_tSignal.notify_one();
}

void LogQueue::drop() noexcept
{
    ++m_pState->m_nDropped;
}

std::uint64_t LogQueue::dropped() const noexcept
{
    return m_pState->m_nDropped;
}

}  // namespace server
