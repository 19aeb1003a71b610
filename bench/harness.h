#pragma once

#include <cstddef>
#include <ctime>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// Makes the compiler believe that the value is read, so that computing it cannot be left out.
template <typename T>
inline void keep(const T& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// Does a piece of work as often as it is told and returns what that cost in all, in the row's unit.
using Batch = std::function<double(std::size_t repetitions)>;

/// Nanoseconds of processor time that the calling thread has used. Other processes on the machine do not count in it,
/// as they would in the time of day; nothing measured here waits.
inline double processorTime()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// A batch that repeats `work()` and counts all of it. A call that does several operations names their number, and the
/// row then shows the cost of one.
template <typename Work>
Batch repeated(Work work, std::size_t operations = 1)
{
    return [work = std::move(work), operations](std::size_t repetitions) mutable {
        const double begin = processorTime();
        for (std::size_t i = 0; i < repetitions; ++i) {
            work();
        }
        return (processorTime() - begin) / static_cast<double>(operations);
    };
}

/// A batch that counts what `work()` takes to build its result, not what it takes to clear it away.
template <typename Work>
Batch building(Work work)
{
    return [work = std::move(work)](std::size_t repetitions) mutable {
        double total = 0;
        for (std::size_t i = 0; i < repetitions; ++i) {
            const double begin = processorTime();
            const auto result = work();
            total += processorTime() - begin;
            keep(result);
        }
        return total;
    };
}

/// What a row is to reach.
struct Target
{
    enum Kind
    {
        kNone = 0,
        kRatioAtLeast = 1,  ///< peer / ours at least `m_nValue`
        kOursBelow = 2,     ///< ours below `m_nValue`, in the row's unit
        kKindEnd_ = 3
    };

    Kind m_eKind = kNone;
    double m_nValue = 0;
};

enum Unit
{
    kNanoseconds = 0,
    kBytes = 1,
    kUnitEnd_ = 2
};

/// Ours and, where there is one, the peer, ready to run.
struct Contest
{
    Batch m_tOurs;
    Batch m_tPeer;
    /// Repetitions a batch; 0: as many as fill a few milliseconds.
    std::size_t m_nRepetitions = 0;
    /// Batches at most, where each takes long; 0: as many as the other rows have.
    std::size_t m_nMostBatches = 0;
};

/// A row of the table: a situation, who else is measured in it, and what is to be reached. `m_tPrepare` runs only when
/// the row does.
struct Situation
{
    std::string m_sName;
    std::string m_sPeer;
    Target m_tTarget;
    std::function<Contest()> m_tPrepare;
    Unit m_eUnit = kNanoseconds;
};

struct Options
{
    std::string m_sJsonFile;
    std::string m_sRowPattern;
    bool m_bQuick = false;
};

/// The medians of one situation.
struct Result
{
    const Situation* m_pSituation = nullptr;
    double m_nOurs = 0;
    double m_nPeer = 0;
    std::size_t m_nBatches = 0;

    bool hasPeer() const noexcept { return !m_pSituation->m_sPeer.empty(); }
    double ratio() const noexcept { return m_nPeer / m_nOurs; }
    bool isReached() const noexcept;
};

/// Runs the situations whose name the pattern finds, prints the table to standard output and writes the JSON file when
/// one is named. Batches of ours and of the peer alternate, so that a disturbance of the machine meets both; what is
/// shown is the median of all batches. Returns how many rows were measured. Throws std::regex_error, and
/// std::runtime_error for a file that cannot be written.
std::size_t run(const std::vector<Situation>& situations, const Options& options);

}  // namespace bench
