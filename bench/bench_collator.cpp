#include <unicode/ucol.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "rows.h"
#include "sortcorpora.h"
#include "webi18n/collator.h"

// The collator as a host uses it, on its wide text, beside ICU's on its own UTF-16.

namespace bench {

namespace {

using vel::i18n::CollationStrength;
using vel::i18n::Collator;
using vel::i18n::NLSEnvironment;
using vel::i18n::NLSThreadContext;

/// A thread's collator with all that it stands on.
class Ours
{
public:
    Ours(const std::string& tag, CollationStrength strength)
        : m_tContext(NLSEnvironment::getDefaultEnvironment()),
          m_tCollator(m_tContext, vel::String(std::wstring(tag.begin(), tag.end())), strength)
    {}

    Collator& collator() { return m_tCollator; }

private:
    vel::Handle<NLSEnvironment> m_hGuard = NLSEnvironment::getEnvironmentGuard();
    NLSThreadContext m_tContext;
    Collator m_tCollator;
};

struct CloseCollator
{
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using Peer = std::shared_ptr<UCollator>;

Peer openPeer(const std::string& tag, UCollationStrength strength)
{
    UErrorCode status = U_ZERO_ERROR;
    const Peer collator(ucol_open(tag.c_str(), &status), CloseCollator());
    ucol_setStrength(collator.get(), strength);
    if (U_FAILURE(status)) {
        throw std::runtime_error("ICU cannot open " + tag);
    }
    return collator;
}

using WideTexts = std::shared_ptr<const std::vector<std::wstring>>;
using Utf16Texts = std::shared_ptr<const std::vector<std::u16string>>;

std::wstring widened(const std::u16string& text)
{
    std::wstring wide;
    wide.reserve(text.size());  // no more memory than it needs: the peer's copies have none to spare either
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if ((unit & 0xFC00) == 0xD800 && i + 1 < text.size()) {
            wide += static_cast<wchar_t>(0x10000 + ((unit & 0x3FF) << 10) + (text[++i] & 0x3FF));
        } else {
            wide += static_cast<wchar_t>(unit);
        }
    }
    return wide;
}

WideTexts wideTexts(const std::vector<std::u16string>& texts)
{
    auto wide = std::make_shared<std::vector<std::wstring>>();
    for (const std::u16string& each : texts) {
        wide->push_back(widened(each));
    }
    return wide;
}

/// A copy, whose texts lie one behind the other as the wide ones do: those of a corpus lie as they were before it was
/// shuffled, neighbours side by side.
Utf16Texts nativeTexts(const std::vector<std::u16string>& texts)
{
    return std::make_shared<std::vector<std::u16string>>(texts);
}

/// The corpora are made when the first row of them runs.
constexpr const char* kCorpora[] = {"ASCII", "words", "en", "de", "sv", "fr-CA", "ru",
                                    "ar",    "th",    "ja", "ko", "zh", "mixed"};

const SortCorpus& corpusOf(const std::string& name)
{
    for (const SortCorpus& each : sortCorpora()) {
        if (each.m_sName == name) {
            return each;
        }
    }
    throw std::runtime_error("there are no texts called " + name);
}

/// A strength, as both sides call it.
struct Strength
{
    const char* m_pName;
    CollationStrength m_eOurs;
    UCollationStrength m_ePeer;
    double m_nTarget;
};

constexpr Strength kTertiary = {"tertiary", vel::i18n::kCollationStrengthDefault, UCOL_TERTIARY, 4};
constexpr Strength kStrengths[] = {
    {"primary", vel::i18n::kCollationStrengthPrimaryFlag, UCOL_PRIMARY, 5},
    {"secondary", vel::i18n::kCollationStrengthSecondaryFlag, UCOL_SECONDARY, 5},
    kTertiary,
    {"quaternary", vel::i18n::kCollationStrengthQuarnaryFlag, UCOL_QUATERNARY, 2.5},
    {"identical", vel::i18n::kCollationStrengthIdentical, UCOL_IDENTICAL, 2.5},
};

/// Keys of all texts, one after the other into a pool.
Batch keysOurs(const std::string& tag, const Strength& strength, const WideTexts& texts)
{
    const auto ours = std::make_shared<Ours>(tag, strength.m_eOurs);
    const auto pool = std::make_shared<vel::NarrowStringPool>(std::size_t{1} << 16);
    const auto makeAll = [=] {
        for (const std::wstring& each : *texts) {
            keep(ours->collator().createRefCollationKey(each.data(), each.size(), *pool));
            pool->clear();
        }
    };
    return repeated(makeAll, texts->size());
}

/// The same by several threads at once, each all texts with a collator of its own on the one table: what a key costs
/// when the work is done with the last of them. Processor time, as everywhere: what the threads take from each other
/// counts, what other processes take from them does not.
Batch keysOfThreads(std::size_t count, const std::string& tag, const Strength& strength, const WideTexts& texts)
{
    const auto held = std::make_shared<Ours>(tag, strength.m_eOurs);  // and with it the table between the batches
    return [=](std::size_t repetitions) {
        keep(held);
        std::atomic<std::size_t> waiting{count};
        std::vector<double> costs(count);
        std::vector<std::thread> threads;
        for (double& cost : costs) {
            threads.emplace_back([&] {
                const Batch keys = keysOurs(tag, strength, texts);
                keys(1);  // each core learns the texts first
                for (--waiting; waiting > 0;) {
                    std::this_thread::yield();
                }
                cost = keys(repetitions);
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return *std::max_element(costs.begin(), costs.end()) / static_cast<double>(count);
    };
}

Batch keysPeer(const std::string& tag, const Strength& strength, const Utf16Texts& texts)
{
    const Peer collator = openPeer(tag, strength.m_ePeer);
    const auto makeAll = [=] {
        std::uint8_t key[4096];
        for (const std::u16string& each : *texts) {
            keep(ucol_getSortKey(collator.get(), each.data(), static_cast<std::int32_t>(each.size()), key, sizeof key));
        }
    };
    return repeated(makeAll, texts->size());
}

void addKeyRow(std::vector<Situation>& rows, const std::string& name, const Strength& strength)
{
    rows.push_back({std::string("collation key, ") + strength.m_pName + ", " + name,
                    "ucol_getSortKey",
                    {Target::kRatioAtLeast, strength.m_nTarget},
                    [name, &strength] {
                        const SortCorpus& corpus = corpusOf(name);
                        return Contest{keysOurs(corpus.m_sTag, strength, wideTexts(corpus.m_tTexts)),
                                       keysPeer(corpus.m_sTag, strength, nativeTexts(corpus.m_tTexts))};
                    }});
}

void addThreadsRow(std::vector<Situation>& rows, const std::string& name)
{
    rows.push_back(
        {"collation key, tertiary, " + name + ", two threads", "one thread", {Target::kRatioAtLeast, 1.8}, [name] {
             const SortCorpus& corpus = corpusOf(name);
             const WideTexts texts = wideTexts(corpus.m_tTexts);
             constexpr std::size_t kKeys = 60'000;
             return Contest{keysOfThreads(2, corpus.m_sTag, kTertiary, texts),
                            keysOfThreads(1, corpus.m_sTag, kTertiary, texts), kKeys / texts->size() + 1};
         }});
}

/// Pairs of texts, by their indexes.
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

Pairs neighbours(const SortCorpus& corpus, bool inOrder)
{
    std::vector<std::size_t> order(corpus.m_tTexts.size());
    std::iota(order.begin(), order.end(), 0);
    if (inOrder) {
        const Peer collator = openPeer(corpus.m_sTag, UCOL_TERTIARY);
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            const std::u16string& left = corpus.m_tTexts[a];
            const std::u16string& right = corpus.m_tTexts[b];
            return ucol_strcoll(collator.get(), left.data(), static_cast<std::int32_t>(left.size()), right.data(),
                                static_cast<std::int32_t>(right.size())) == UCOL_LESS;
        });
    } else {
        std::shuffle(order.begin(), order.end(), std::mt19937(1));
    }
    Pairs pairs;
    for (std::size_t i = 1; i < order.size(); ++i) {
        pairs.emplace_back(order[i - 1], order[i]);
    }
    return pairs;
}

Contest compareContest(const SortCorpus& corpus, bool inOrder)
{
    const Pairs pairs = neighbours(corpus, inOrder);
    const WideTexts wide = wideTexts(corpus.m_tTexts);
    const Utf16Texts native = nativeTexts(corpus.m_tTexts);
    const auto ours = std::make_shared<Ours>(corpus.m_sTag, vel::i18n::kCollationStrengthDefault);
    const Peer peer = openPeer(corpus.m_sTag, UCOL_TERTIARY);
    const auto compareOurs = [=] {
        for (const auto& [a, b] : pairs) {
            keep(ours->collator().compare((*wide)[a], (*wide)[b]));
        }
    };
    const auto comparePeer = [=] {
        for (const auto& [a, b] : pairs) {
            const std::u16string& left = (*native)[a];
            const std::u16string& right = (*native)[b];
            keep(ucol_strcoll(peer.get(), left.data(), static_cast<std::int32_t>(left.size()), right.data(),
                              static_cast<std::int32_t>(right.size())));
        }
    };
    return {repeated(compareOurs, pairs.size()), repeated(comparePeer, pairs.size())};
}

/// A sort for the first time in a process costs its table, later only finding it.
Contest laterUseContest()
{
    const auto first = std::make_shared<Ours>("sv", vel::i18n::kCollationStrengthDefault);
    const auto context = std::make_shared<NLSThreadContext>(NLSEnvironment::getDefaultEnvironment());
    const auto openAgain = [=] {
        keep(first);
        Collator again(*context, vel::String(L"sv"), vel::i18n::kCollationStrengthDefault);
        keep(again);
    };
    return {repeated(openAgain), {}};
}

}  // namespace

void addCollatorRows(std::vector<Situation>& rows)
{
    for (const std::string name : kCorpora) {
        for (const Strength& strength : kStrengths) {
            addKeyRow(rows, name, strength);
        }
        for (const bool inOrder : {false, true}) {
            rows.push_back({"Collator::compare, " + name + (inOrder ? ", neighbours" : ", random pairs"),
                            "ucol_strcoll",
                            {Target::kRatioAtLeast, 1},
                            [=] { return compareContest(corpusOf(name), inOrder); }});
        }
    }
    for (const char* name : {"en", "th", "ja", "words"}) {
        addThreadsRow(rows, name);
    }
    rows.push_back({"a collator for a sort in use", "", {Target::kOursBelow, 2000}, laterUseContest});
}

}  // namespace bench
