#include <unicode/unistr.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "childprocess.h"
#include "rows.h"
#include "sortcorpora.h"
#include "temporaryfolder.h"

// The command that sorts, in a process of its own and by the clock, since it works with several threads: what counts is
// how long one waits for a sorted file.

namespace bench {

namespace {

constexpr std::size_t kLines = 1'000'000;
constexpr std::size_t kBatches = 9;  // each of them takes seconds

using Command = std::vector<std::string>;

std::vector<std::string> utf8TextsOf(const std::string& corpus)
{
    std::vector<std::string> texts;
    for (const SortCorpus& each : sortCorpora()) {
        if (each.m_sName == corpus) {
            for (const std::u16string& text : each.m_tTexts) {
                icu::UnicodeString(text.data(), static_cast<int32_t>(text.size())).toUTF8String(texts.emplace_back());
            }
        }
    }
    return texts;
}

/// Two or three Swedish names and English words a line, always the same lines.
std::string makeLines()
{
    const std::vector<std::string> kinds[] = {utf8TextsOf("sv"), utf8TextsOf("words")};
    std::mt19937 random(5);
    std::string lines;
    for (std::size_t i = 0; i < kLines; ++i) {
        for (std::size_t left = 2 + random() % 2; left != 0; --left) {
            const std::vector<std::string>& texts = kinds[random() % 2];
            lines.append(texts[random() % texts.size()]) += left == 1 ? '\n' : ' ';
        }
    }
    return lines;
}

/// The file to sort, and what sorts it.
class Sorting
{
public:
    Sorting() { m_tFolder.write("lines.txt", makeLines()); }

    Command ours() const { return {WEBI18N_BENCH_COMMAND, "sort", "--sort", "sv", path("lines.txt")}; }
    Command icu() const { return {WEBI18N_BENCH_ICUSORT, "sv", path("lines.txt")}; }
    /// Stable, since the others are.
    Command coreutils() const
    {
        return {"env",  "LC_ALL=sv_SE.UTF-8", "LOCPATH=" + m_tFolder.native().string(),
                "sort", "--stable",           path("lines.txt")};
    }

    /// Makes the locale of `coreutils()`, which need not be there on a machine.
    void makeLocale() const
    {
        try {
            nanosecondsToRun({"localedef", "-i", "sv_SE", "-f", "UTF-8", path("sv_SE.UTF-8")}, "/dev/null");
        } catch (const std::runtime_error&) {
            throw std::runtime_error("localedef makes no sv_SE.UTF-8: install what scripts/packages/bench.txt lists");
        }
    }

    std::string outputOf(const Command& command) const
    {
        nanosecondsToRun(command, path("output"));
        std::ifstream file(path("output"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string path(const char* name) const { return m_tFolder.native() / name; }

    testsupport::TemporaryFolder m_tFolder;
};

Batch waitingFor(std::shared_ptr<const Sorting> sorting, Command command)
{
    return [sorting = std::move(sorting), command = std::move(command)](std::size_t) {
        return nanosecondsToRun(command, "/dev/null");
    };
}

Contest coreutilsContest()
{
    const auto sorting = std::make_shared<const Sorting>();
    sorting->makeLocale();
    return {waitingFor(sorting, sorting->ours()), waitingFor(sorting, sorting->coreutils()), 1, kBatches};
}

Contest icuContest()
{
    const auto sorting = std::make_shared<const Sorting>();
    if (sorting->outputOf(sorting->ours()) != sorting->outputOf(sorting->icu())) {
        throw std::runtime_error("webi18n sort and ICU's keys give different orders");
    }
    return {waitingFor(sorting, sorting->ours()), waitingFor(sorting, sorting->icu()), 1, kBatches};
}

}  // namespace

void addSortRows(std::vector<Situation>& rows)
{
    const std::string name = "webi18n sort, a million lines, sv";
    rows.push_back({name, "sort, sv_SE.UTF-8", {Target::kRatioAtLeast, 3}, coreutilsContest});
    rows.push_back({name, "ICU keys, std::sort", {Target::kRatioAtLeast, 3}, icuContest});
}

}  // namespace bench
