// Names that somebody may have meant: the language by its tag or its English name, then the sorts that it has.

#include "vel/nls/sortnames.h"

#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "sortname.h"

namespace vel::nls {

namespace {

constexpr std::size_t kMostNames = 3;
/// Of longer ones nobody knows what was meant.
constexpr std::size_t kMostLetters = 64;

/// A name that there is, and how many letters have to be changed to come to it.
using Candidate = std::pair<std::size_t, std::string>;

std::string spelledAsTag(std::string_view name)
{
    std::string tag(name);
    for (char& each : tag) {
        each = each == '_' ? '-' : each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    }
    return tag;
}

/// Letters to insert, to leave out or to replace.
std::size_t distance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t k = 0; k < to.size(); ++k) {
            const std::size_t replaced = diagonal + (from[i] == to[k] ? 0 : 1);
            diagonal = row[k + 1];
            row[k + 1] = std::min({replaced, diagonal + 1, row[k] + 1});
        }
    }
    return row.back();
}

std::string englishNameOf(const char* language)
{
    std::array<char16_t, 64> name{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        uloc_getDisplayLanguage(language, "en", name.data(), static_cast<int32_t>(name.size()), &status);
    return U_FAILURE(status) || length > static_cast<int32_t>(name.size())
               ? std::string()
               : std::string(name.begin(), name.begin() + length);
}

std::vector<std::string> nearest(std::vector<Candidate> candidates, std::size_t most)
{
    std::sort(candidates.begin(), candidates.end());
    std::vector<std::string> names;
    for (Candidate& each : candidates) {
        if (each.first <= most && names.size() < kMostNames) {
            names.push_back(std::move(each.second));
        }
    }
    return names;
}

/// The sorts of a language that is known.
std::vector<std::string> nearestOfLanguage(const std::string& language, const std::string& name)
{
    std::vector<Candidate> candidates{{0, language}};
    UErrorCode status = U_ZERO_ERROR;
    const EnumerationPtr types(ucol_getKeywordValuesForLocale("collation", language.c_str(), true, &status));
    throwOnFailure(status);
    while (const char* type = uenum_next(types.get(), nullptr, &status)) {
        const char* const keyword = uloc_toUnicodeLocaleType("co", type);
        if (keyword == nullptr || std::string_view(keyword) == "standard") {
            continue;
        }
        const std::string tag = language + "-u-co-" + keyword;
        candidates.emplace_back(1 + distance(name, tag), tag);
    }
    return nearest(std::move(candidates), kMostLetters);
}

/// The languages that ICU sorts.
std::vector<std::string> nearestLanguages(const std::string& name)
{
    std::vector<Candidate> candidates{{distance(name, "binary"), "binary"}};
    const int32_t count = ucol_countAvailable();
    for (int32_t i = 0; i < count; ++i) {
        const char* const locale = ucol_getAvailable(i);
        if (std::string_view(locale).find('_') == std::string_view::npos) {
            const std::string english = spelledAsTag(englishNameOf(locale));
            candidates.emplace_back(std::min(distance(name, locale), distance(name, english)), locale);
        }
    }
    return nearest(std::move(candidates), name.size() / 4);
}

}  // namespace

std::vector<std::string> nearestSortNames(std::string_view name)
{
    if (name.empty() || name.size() > kMostLetters || name.find('\0') != std::string_view::npos) {
        return {};
    }
    const std::string tag = spelledAsTag(name);
    if (const std::optional<SortName> resolved = resolveSortName(tag)) {
        return {resolved->m_sCanonical};
    }
    const std::string language = tag.substr(0, tag.find('-'));
    return isSortLanguage(language) ? nearestOfLanguage(language, tag) : nearestLanguages(language);
}

}  // namespace vel::nls
