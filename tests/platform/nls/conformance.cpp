// The long run: conformance [pairs in all] [seed] [sorts]. All tailored sorts of ICU, with and without settings, or
// those whose whole tag matches the regular expression, against ICU's keys. Prints a line for each sort; exit 1 when an
// order differs.

#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <mutex>
#include <regex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "sortpairs.h"

namespace {

std::string tagOf(const std::string& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    char tag[256];
    uloc_toLanguageTag(locale.c_str(), tag, sizeof tag, 1, &status);
    return U_SUCCESS(status) ? tag : "";
}

void addTypes(std::vector<std::string>& tags, const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    UEnumeration* types = ucol_getKeywordValuesForLocale("collation", locale, 0, &status);
    while (const char* type = uenum_next(types, nullptr, &status)) {
        const std::string tag = tagOf(std::string(locale) + "@collation=" + type);
        if (!tag.empty()) {
            tags.push_back(tag);
        }
    }
    uenum_close(types);
}

std::vector<std::string> allSorts()
{
    std::vector<std::string> tags{"und", "fr-CA"};
    const int32_t count = ucol_countAvailable();
    for (int32_t i = 0; i < count; ++i) {
        const std::string locale = ucol_getAvailable(i);
        // A region has its language's sort, but for few, which are named here.
        if (locale.find('_') == std::string::npos || locale == "fr_CA" || locale == "zh_Hant" || locale == "de_AT" ||
            locale == "sr_Latn" || locale == "en_US_POSIX") {
            addTypes(tags, locale.c_str());
        }
    }
    for (const char* tag : {"en", "ja", "da", "fr-CA", "zh", "ru", "ko", "ar", "th"}) {
        // Two at once where one changes what the other reads.
        for (const char* setting :
             {"-u-ka-shifted-kk", "-u-ka-shifted-kn", "-u-kb-kk", "-u-ka-shifted-kb-kf-upper", "-u-kf-upper-kn-kk",
              "-u-ka-shifted-kr-grek-latn-digit", "-u-ka-shifted", "-u-kf-upper", "-u-kf-lower", "-u-kn", "-u-kb",
              "-u-kk", "-u-kc", "-u-ka-shifted-kv-symbol", "-u-kr-grek-latn-zzzz-digit"}) {
            tags.push_back(std::string(tag) + setting);
        }
    }
    return tags;
}

/// Throws std::runtime_error when there is none, std::regex_error when the expression is none.
std::vector<std::string> sortsThatMatch(const char* expression)
{
    const std::regex pattern(expression);
    std::vector<std::string> tags = allSorts();
    tags.erase(std::remove_if(tags.begin(), tags.end(),
                              [&](const std::string& tag) { return !std::regex_match(tag, pattern); }),
               tags.end());
    if (tags.empty()) {
        throw std::runtime_error(std::string(expression) + ": no such sort");
    }
    return tags;
}

/// Compares each sort on whatever thread is free, and prints a line for each when it is done.
class Run
{
public:
    Run(std::vector<std::string> tags, std::size_t pairs, std::uint64_t seed)
        : m_tTags(std::move(tags)), m_nPairsEach(pairs / m_tTags.size() + 1), m_nSeed(seed)
    {}

    void work()
    {
        for (std::size_t i = m_nNext++; i < m_tTags.size(); i = m_nNext++) {
            add(m_tTags[i], reportOn(m_tTags[i]));
        }
    }
    /// Whether there was no difference.
    bool finish() const
    {
        std::cout << m_tTags.size() << " sorts, " << m_nPairs << " pairs at five strengths, " << m_nDifferences
                  << " differences\n";
        return m_nDifferences == 0;
    }

private:
    sortpairs::Report reportOn(const std::string& tag) const
    {
        try {
            return sortpairs::comparePairs(tag, m_nPairsEach, m_nSeed);
        } catch (const std::exception& error) {
            return {0, 1, error.what()};
        }
    }
    void add(const std::string& tag, const sortpairs::Report& report)
    {
        const std::lock_guard lock(m_tMutex);
        std::cout << tag << ": " << report.m_nPairs << " pairs, " << report.m_nDifferences << " differences"
                  << (report.m_nDifferences == 0 ? "" : "; " + report.m_sFirst) << std::endl;
        m_nPairs += report.m_nPairs;
        m_nDifferences += report.m_nDifferences;
    }

    const std::vector<std::string> m_tTags;
    const std::size_t m_nPairsEach;
    const std::uint64_t m_nSeed;
    std::atomic<std::size_t> m_nNext{0};
    std::mutex m_tMutex;
    std::size_t m_nPairs = 0;
    std::size_t m_nDifferences = 0;
};

}  // namespace

int main(int argc, char** argv)
{
    const std::size_t wanted = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 20'000'000;
    const std::uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    try {
        Run run(sortsThatMatch(argc > 3 ? argv[3] : ".*"), wanted, seed);
        std::vector<std::thread> threads(std::max(1U, std::thread::hardware_concurrency()));
        for (std::thread& thread : threads) {
            thread = std::thread([&] { run.work(); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return run.finish() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
