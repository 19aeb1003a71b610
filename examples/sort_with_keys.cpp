// A list is sorted by keys that are made once, and the keys are kept for later: sort_with_keys

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>
#include <vector>

#include <webi18n/collator.h>

namespace {

using vel::i18n::Collator;
using vel::i18n::RefCollationKey;

/// A name and its key, whose bytes lie in a pool.
struct Entry
{
    std::wstring_view m_sName;
    RefCollationKey m_tKey;
};

/// The names in the collator's order; names that compare equal keep theirs.
std::vector<Entry> sorted(const std::vector<std::wstring_view>& names, Collator& collator, vel::NarrowStringPool& pool)
{
    std::vector<Entry> entries;
    entries.reserve(names.size());
    for (const std::wstring_view name : names) {
        entries.push_back({name, collator.createRefCollationKey(name.data(), name.size(), pool)});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.m_tKey < b.m_tKey; });
    return entries;
}

void showSorted(const wchar_t* sort, vel::i18n::CollationStrength strength, vel::i18n::NLSThreadContext& context)
{
    Collator collator(context, sort, strength);
    // A name that is no sort leaves the default one in force without a word: whoever takes it from a file has to look.
    if (collator.sortName() != sort) {
        std::cout << vel::toUtf8Lossy(sort) << ": there is no such sort\n";
        return;
    }
    vel::NarrowStringPool pool;  // outlives the keys
    std::cout << vel::toUtf8Lossy(sort) << ", strength " << strength << ':';
    for (const Entry& each : sorted({L"zebra", L"Öl", L"öl", L"Ofen", L"Ähre", L"alt"}, collator, pool)) {
        std::cout << ' ' << vel::toUtf8Lossy(each.m_sName);
    }
    std::cout << '\n';
}

/// Keys are bytes: what was stored elsewhere compares with what is made now as long as the stamp is the same.
void showStored(vel::i18n::NLSThreadContext& context)
{
    Collator collator(context, L"sv", vel::i18n::kCollationStrengthDefault);
    const vel::String storedVersion = collator.version();  // stands beside the stored keys
    const vel::NarrowString storedKey = collator.createCollationKey(L"Öl", 2).bytes();

    Collator later(context, L"sv", vel::i18n::kCollationStrengthDefault);
    if (later.version() != storedVersion) {
        std::cout << "the stored keys are of another version: make them again\n";
        return;
    }
    const auto key = later.createCollationKey(L"zebra", 5);
    std::cout << "zebra stands " << (vel::i18n::compareKeys(key.view(), storedKey) < 0 ? "before" : "behind")
              << " the stored Öl\n";
}

}  // namespace

int main()
{
    try {
        const auto hGuard = vel::i18n::NLSEnvironment::getEnvironmentGuard();
        vel::i18n::NLSThreadContext context(vel::i18n::NLSEnvironment::getDefaultEnvironment());
        showSorted(L"sv", vel::i18n::kCollationStrengthDefault, context);
        showSorted(L"de", vel::i18n::kCollationStrengthDefault, context);
        showSorted(L"de-u-co-phonebk", vel::i18n::kCollationStrengthDefault, context);
        showSorted(L"de", vel::i18n::kCollationStrengthAccentAndCaseInsensitive, context);
        showSorted(L"sv-u-co-phonebk", vel::i18n::kCollationStrengthDefault, context);
        showStored(context);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    } catch (const wchar_t*) {
        std::cerr << "the language service has no data\n";  // what it throws is the text "error"
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
