#include "net/workers.h"

#include <utility>

namespace server {

void JobQueue::push(Job& job) noexcept
{
    job.m_pNext = nullptr;
    (m_pLast == nullptr ? m_pFirst : m_pLast->m_pNext) = &job;
    m_pLast = &job;
    ++m_nSize;
}

Job* JobQueue::pop() noexcept
{
    Job* const first = m_pFirst;
    if (first != nullptr) {
        m_pFirst = first->m_pNext;
        m_pLast = m_pFirst == nullptr ? nullptr : m_pLast;
        --m_nSize;
    }
    return first;
}

Workers::Workers(std::size_t longJobs, std::function<void()> done) : m_nLongJobs(longJobs), m_tDone(std::move(done))
{}

Workers::~Workers()
{
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        m_bEnding = true;
    }
    m_tShortSignal.notify_all();
    m_tLongSignal.notify_all();
    for (std::thread& each : m_tThreads) {
        each.join();
    }
}

void Workers::start(unsigned threads)
{
    for (unsigned index = 0; index < threads; ++index) {
        m_tThreads.emplace_back([this] { workAt(m_tShort, m_tShortSignal); });
    }
    if (threads != 0) {
        m_tThreads.emplace_back([this] { workAt(m_tLong, m_tLongSignal); });
    }
}

void Workers::submitShort(Job& job) noexcept
{
    submit(job, m_tShort, m_tShortSignal);
}

bool Workers::submitLong(Job& job) noexcept
{
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        if (m_tLong.size() >= m_nLongJobs) {
            return false;
        }
    }
    submit(job, m_tLong, m_tLongSignal);
    return true;
}

Job* Workers::takeDone() noexcept
{
    const std::lock_guard<std::mutex> lock(m_tMutex);
    return m_tFinished.pop();
}

void Workers::submit(Job& job, JobQueue& queue, std::condition_variable& signal) noexcept
{
    if (m_tThreads.empty()) {
        job.work();
        finish(job);
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        queue.push(job);
    }
    signal.notify_one();
}

void Workers::finish(Job& job) noexcept
{
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        m_tFinished.push(job);
    }
    m_tDone();
}

void Workers::workAt(JobQueue& queue, std::condition_variable& signal) noexcept
{
    for (;;) {
        std::unique_lock<std::mutex> lock(m_tMutex);
        signal.wait(lock, [&] { return m_bEnding || queue.size() != 0; });
        if (m_bEnding) {
            return;
        }
        Job* const job = queue.pop();
        lock.unlock();
        job->work();
        finish(*job);
    }
}

}  // namespace server
