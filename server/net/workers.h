#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace server {

/// One piece of work. It is its own place in the queues, so that no queue needs memory.
class Job
{
public:
    /// On a worker's thread, or on the submitting one where there are no workers.
    virtual void work() noexcept = 0;
    virtual ~Job() = default;

private:
    friend class JobQueue;
    Job* m_pNext = nullptr;
};

/// First in, first out. The jobs belong to whoever puts them in.
class JobQueue
{
public:
    void push(Job& job) noexcept;
    /// The first one; null when there is none.
    Job* pop() noexcept;
    std::size_t size() const noexcept { return m_nSize; }

private:
    Job* m_pFirst = nullptr;
    Job* m_pLast = nullptr;
    std::size_t m_nSize = 0;
};

/// The threads that do the work of requests: several for those that are short, and one for the long ones, so that these
/// wait for each other and nobody else waits for them.
class Workers
{
public:
    /// `done` is called on the workers' threads after each job, and may not throw. Beyond `longJobs` that wait, long
    /// ones are not taken.
    Workers(std::size_t longJobs, std::function<void()> done);
    /// Waits for the jobs that are being worked at; those that wait are dropped.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// So many threads for short jobs and one for long ones; with 0 there are none at all, and jobs are done where they
    /// are submitted. Throws std::system_error when the system has no thread left.
    void start(unsigned threads);

    void submitShort(Job& job) noexcept;
    /// False when it is not taken.
    bool submitLong(Job& job) noexcept;
    /// A job that is done; null when there is none.
    Job* takeDone() noexcept;

private:
    void submit(Job& job, JobQueue& queue, std::condition_variable& signal) noexcept;
    void finish(Job& job) noexcept;
    void workAt(JobQueue& queue, std::condition_variable& signal) noexcept;

    std::size_t m_nLongJobs;
    std::function<void()> m_tDone;
    std::mutex m_tMutex;  // of all that follows but the threads
    std::condition_variable m_tShortSignal;
    std::condition_variable m_tLongSignal;
    JobQueue m_tShort;
    JobQueue m_tLong;
    JobQueue m_tFinished;
    bool m_bEnding = false;
    std::vector<std::thread> m_tThreads;
};

}  // namespace server
