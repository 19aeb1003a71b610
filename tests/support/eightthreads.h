#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace testsupport {

inline constexpr int kThreads = 8;

/// Runs the work on threads that start together, eight unless told; the work returns how often something was wrong.
inline int faultsOf(const std::function<int(int thread)>& work, int count = kThreads)
{
    std::atomic<int> waiting{count};
    std::atomic<int> faults{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            for (--waiting; waiting > 0;) {
                std::this_thread::yield();
            }
            faults += work(i);
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    return faults;
}

}  // namespace testsupport
