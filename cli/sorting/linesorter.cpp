#include "sorting/linesorter.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <system_error>
#include <thread>

#include "failures.h"
#include "sorting/lineslices.h"

namespace cli {

namespace {

constexpr std::size_t kMostThreads = 4;
/// Runs that are merged at once, each with an open file and a buffer.
constexpr std::size_t kMostRuns = 64;
/// Text, its keys and the entries of its lines, as a multiple of the text: lines of sixteen bytes need about that.
constexpr std::size_t kMemoryPerTextByte = 7;
constexpr std::size_t kLeastTextPerThread = std::size_t{256} << 10;
/// Merged before what they give is handed over: with several, threads are done at about the same time.
constexpr std::size_t kSlicesPerThread = 4;
/// What is handed over at once of merged runs.
constexpr std::size_t kTextBytes = std::size_t{64} << 10;

std::size_t threadCount()
{
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostThreads);
}

/// Up to `count` parts of about the same size, each of whole lines.
std::vector<std::string_view> split(std::string_view text, char separator, std::size_t count)
{
    count = std::clamp<std::size_t>(text.size() / kLeastTextPerThread, 1, count);
    std::vector<std::string_view> parts;
    for (; count > 1; --count) {
        const std::size_t end = text.find(separator, text.size() / count);
        parts.push_back(text.substr(0, end == std::string_view::npos ? end : end + 1));
        text.remove_prefix(parts.back().size());
    }
    parts.push_back(text);
    return parts;
}

/// Runs the work for 0 to count - 1 at once; the first exception passes.
void runAtOnce(std::size_t count, const std::function<void(std::size_t)>& work)
{
    std::vector<std::exception_ptr> faults(count);
    const auto guarded = [&](std::size_t index) {
        try {
            work(index);
        } catch (...) {
            faults[index] = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(count);
    for (std::size_t i = 1; i < count; ++i) {
        try {
            threads.emplace_back(guarded, i);
        } catch (const std::system_error&) {
            guarded(i);  // the system has no thread to spare
        }
    }
    guarded(0);
    for (std::thread& each : threads) {
        each.join();
    }
    for (const std::exception_ptr& fault : faults) {
        if (fault) {
            std::rethrow_exception(fault);
        }
    }
}

}  // namespace

LineSorter::LineSorter(const vel::String& sort, vel::i18n::CollationStrength strength, std::size_t memory,
                       char separator)
    : m_nMemory(memory), m_cSeparator(separator)
{
    while (m_tMakers.size() < threadCount()) {
        m_tMakers.push_back(makeKeyMaker(sort, strength));
        m_tParts.push_back(std::make_unique<KeyedLines>());
    }
}

void LineSorter::sort(InputFiles& files, const Append& append, const Take& take)
{
    TextRound round(files, std::min(m_nMemory / kMemoryPerTextByte, kMostRoundBytes), m_cSeparator);
    bool isMore = round.next();
    while (isMore) {
        sortRound(round);
        m_tProgress.show(m_nLines, "lines read");
        if (m_tRuns.empty() && round.isLast()) {
            handOverRound(append, take);
            return;
        }
        addRun();
        isMore = round.next();
    }
    handOverRuns(append, take);
}

void LineSorter::sortRound(const TextRound& round)
{
    std::vector<std::string_view> texts = split(round.text(), m_cSeparator, m_tParts.size());
    const std::size_t busy = texts.size();
    texts.resize(m_tParts.size());
    runAtOnce(busy, [&](std::size_t i) { m_tParts[i]->fill(texts[i], m_cSeparator, *m_tMakers[i]); });
    for (std::size_t i = busy; i < m_tParts.size(); ++i) {
        m_tParts[i]->fill({}, m_cSeparator, *m_tMakers[i]);
    }
    for (const std::unique_ptr<KeyedLines>& part : m_tParts) {
        if (const auto& fault = part->fault()) {
            const auto offset = static_cast<std::size_t>(fault->m_pLine - round.text().data());
            throw UsageError(round.placeOf(offset) + ": invalid UTF-8 at byte offset " +
                             std::to_string(fault->m_nOffset));
        }
        m_nLines += part->size();
    }
}

void LineSorter::addRun()
{
    auto run = std::make_unique<RunFile>();
    const LineSlices slices(m_tParts);
    for (std::size_t i = 0; i < slices.size(); ++i) {
        mergeLines(slices.sources(i), [&](const KeyedLine& line) { run->write(line); });
    }
    m_tRuns.push_back(std::move(run));
    if (m_tRuns.size() < kMostRuns) {
        return;
    }
    auto merged = std::make_unique<RunFile>();
    mergeLines(runSources(), [&](const KeyedLine& line) { merged->write(line); });
    m_tRuns.clear();
    m_tRuns.push_back(std::move(merged));
}

/// A few slices at a time are merged at once, so that the text of all is never held.
void LineSorter::handOverRound(const Append& append, const Take& take) const
{
    const LineSlices slices(m_tParts);
    std::vector<std::string> texts(kSlicesPerThread * m_tParts.size());
    for (std::size_t first = 0; first < slices.size(); first += texts.size()) {
        const std::size_t count = std::min(texts.size(), slices.size() - first);
        std::atomic<std::size_t> next = 0;
        runAtOnce(std::min(m_tParts.size(), count), [&](std::size_t) {
            for (std::size_t i = 0; (i = next++) < count;) {
                texts[i].clear();
                mergeLines(slices.sources(first + i), [&](const KeyedLine& line) { append(texts[i], line.m_sText); });
            }
        });
        std::for_each_n(texts.begin(), count, take);
    }
}

void LineSorter::handOverRuns(const Append& append, const Take& take) const
{
    std::string text;
    mergeLines(runSources(), [&](const KeyedLine& line) {
        append(text, line.m_sText);
        if (text.size() >= kTextBytes) {
            take(text);
            text.clear();
        }
    });
    take(text);
}

std::vector<std::unique_ptr<LineSource>> LineSorter::runSources() const
{
    std::vector<std::unique_ptr<LineSource>> sources;
    for (const std::unique_ptr<RunFile>& run : m_tRuns) {
        sources.push_back(run->read());
    }
    return sources;
}

}  // namespace cli
