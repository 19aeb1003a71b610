#include "sorting/linesorter.h"

#include <malloc.h>

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
/// The program itself, with a sort's tables.
constexpr std::size_t kProgramBytes = std::size_t{16} << 20;
/// Bytes of keys for a byte of text, before any line has been seen.
constexpr double kUsualKeyBytes = 2;
/// What the keys of the lines to come may take beyond those that were seen.
constexpr double kKeyReserve = 1.1;
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

/// What a round gives back shall not be kept for blocks of other sizes, which may not come.
void returnLargeBlocks()
{
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 256 << 10);
#endif
}

}  // namespace

LineSorter::LineSorter(const vel::String& sort, vel::i18n::CollationStrength strength, std::size_t memory,
                       char separator)
    : m_nMemory(memory - std::min(kProgramBytes, memory / 2)),
      m_tCost{1 + kUsualKeyBytes, KeyedLines::kBytesPerLine},
      m_cSeparator(separator),
      m_tRuns(m_nMemory / 8)
{
    returnLargeBlocks();
    while (m_tMakers.size() < threadCount()) {
        m_tMakers.push_back(makeKeyMaker(sort, strength));
        m_tParts.push_back(std::make_unique<KeyedLines>());
    }
}

void LineSorter::sort(InputFiles& files, const Append& append, const Take& take)
{
    {
        TextRound round(files, m_nMemory / 8 * 7, m_cSeparator);
        bool isMore = round.next(m_tCost);
        while (isMore) {
            sortRound(round);
            m_tProgress.show(m_nLines, "lines read");
            if (m_tRuns.isEmpty() && round.isLast()) {
                handOverRound(append, take);
                return;
            }
            addRun();
            isMore = round.next(m_tCost);
        }
    }
    m_tParts.clear();
    handOverRuns(append, take);
}

void LineSorter::sortRound(TextRound& round)
{
    std::vector<std::string_view> texts = split(round.text(), m_cSeparator, m_tParts.size());
    for (std::size_t i = texts.size(); i < m_tParts.size(); ++i) {
        m_tParts[i]->clear();
    }
    const std::size_t limit = m_nMemory / 8 * 7;
    MemoryBudget budget(limit - std::min(limit, round.heldBytes()));
    runAtOnce(texts.size(), [&](std::size_t i) { m_tParts[i]->fill(texts[i], m_cSeparator, *m_tMakers[i], budget); });
    learnCost();
    keepWhatFitted(round);
}

/// Where the keys took more than was expected, the round ends with the last line before the first one without a key.
void LineSorter::keepWhatFitted(TextRound& round)
{
    bool isCut = false;
    for (const std::unique_ptr<KeyedLines>& part : m_tParts) {
        if (isCut) {
            part->clear();
            continue;
        }
        if (const auto& fault = part->fault()) {
            const auto offset = static_cast<std::size_t>(fault->m_pLine - round.text().data());
            throw UsageError(round.placeOf(offset) + ": invalid UTF-8 at byte offset " +
                             std::to_string(fault->m_nOffset));
        }
        m_nLines += part->size();
        if (!part->rest().empty()) {
            round.cut(static_cast<std::size_t>(part->rest().data() - round.text().data()));
            isCut = true;
        }
    }
}

/// The keys of this round say how much text is read for the next.
void LineSorter::learnCost()
{
    std::size_t keys = 0;
    std::size_t text = 1;
    for (const std::unique_ptr<KeyedLines>& part : m_tParts) {
        keys += part->keyBytes();
        text += part->textBytes();
    }
    m_tCost.m_nPerByte = 1 + kKeyReserve * static_cast<double>(keys) / static_cast<double>(text);
}

void LineSorter::addRun()
{
    auto run = std::make_unique<RunFile>(m_tRuns.bufferBytes());
    const LineSlices slices(m_tParts, m_nMemory);
    for (std::size_t i = 0; i < slices.size(); ++i) {
        mergeLines(slices.sources(i), [&](const KeyedLine& line) { run->write(line); });
    }
    m_tRuns.add(std::move(run));
}

/// A few slices at a time are merged at once, so that the text of all is never held.
void LineSorter::handOverRound(const Append& append, const Take& take) const
{
    const LineSlices slices(m_tParts, m_nMemory);
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

void LineSorter::handOverRuns(const Append& append, const Take& take)
{
    std::string text;
    m_tRuns.handOver([&](const KeyedLine& line) {
        append(text, line.m_sText);
        if (text.size() >= kTextBytes) {
            take(text);
            text.clear();
        }
    });
    take(text);
}

}  // namespace cli
