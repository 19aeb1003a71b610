#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <thread>

namespace server {

/// Lines on their way to a descriptor that may be slow, full, or read by nobody. A thread of its own writes them; who
/// puts them in never waits. Any thread.
class LogQueue
{
public:
    /// The descriptor must stay open. Beyond `mostBytes` that wait, lines are left out.
    explicit LogQueue(int descriptor, std::size_t mostBytes = std::size_t{256} << 10);
    /// Gives what waits a short time to be written, then goes without.
    ~LogQueue();
    LogQueue(const LogQueue&) = delete;
    LogQueue& operator=(const LogQueue&) = delete;

    /// A line with its end.
    void write(std::string_view line) noexcept;
    /// A line is left out.
    void drop() noexcept;
    /// How many lines were left out, or could not be written.
    std::uint64_t dropped() const noexcept;

private:
    struct State;

    std::shared_ptr<State> m_pState;  // the thread's too, which may outlive this object
    std::thread m_tThread;
};

}  // namespace server
