#include "sortname.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <vector>

namespace vel::nls {

namespace {

/// Longer names are no sorts: a tag comes from outside.
constexpr std::size_t kMostLetters = 150;

using IdBuffer = std::array<char, 512>;

/// False unless the whole of `tag` is a language tag.
bool readTag(const std::string& tag, IdBuffer& id)
{
    UErrorCode status = U_ZERO_ERROR;
    int32_t parsed = 0;
    uloc_forLanguageTag(tag.c_str(), id.data(), static_cast<int32_t>(id.size()), &parsed, &status);
    return U_SUCCESS(status) && status != U_STRING_NOT_TERMINATED_WARNING && !tag.empty() &&
           static_cast<std::size_t>(parsed) == tag.size();
}

/// ICU takes the language's usual sort where a tag asks for one that it does not have; here that is no sort.
bool hasCollationType(const char* id)
{
    UErrorCode status = U_ZERO_ERROR;
    std::array<char, 64> type{};
    uloc_getKeywordValue(id, "collation", type.data(), static_cast<int32_t>(type.size()), &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING) {
        return false;
    }
    const std::string_view wanted = type.data();
    if (wanted.empty()) {
        return true;
    }
    const EnumerationPtr values(ucol_getKeywordValuesForLocale("collation", id, false, &status));
    throwOnFailure(status);
    while (const char* value = uenum_next(values.get(), nullptr, &status)) {
        if (wanted == value) {
            return true;
        }
    }
    return false;
}

/// What a sort is made of by its keywords, as ICU names them; and what a tag has for private use, which is none.
constexpr std::string_view kKeywords[] = {"collation",
                                          "colalternate",
                                          "colbackwards",
                                          "colcasefirst",
                                          "colcaselevel",
                                          "colnormalization",
                                          "colnumeric",
                                          "colreorder",
                                          "colstrength",
                                          "kv",
                                          "x"};

/// ICU passes over keywords that are none of a sort's; here a name that has one is none.
bool hasSortKeywordsOnly(const char* id)
{
    UErrorCode status = U_ZERO_ERROR;
    const EnumerationPtr keywords(uloc_openKeywords(id, &status));
    throwOnFailure(status);
    while (keywords != nullptr) {
        const char* const keyword = uenum_next(keywords.get(), nullptr, &status);
        if (keyword == nullptr) {
            break;
        }
        if (std::find(std::begin(kKeywords), std::end(kKeywords), keyword) == std::end(kKeywords)) {
            return false;
        }
    }
    return true;
}

std::string canonicalTag(const char* id)
{
    UErrorCode status = U_ZERO_ERROR;
    IdBuffer tag{};
    uloc_toLanguageTag(id, tag.data(), static_cast<int32_t>(tag.size()), true, &status);
    return U_SUCCESS(status) ? std::string(tag.data()) : std::string();
}

void appendReorderCodes(std::string& text, const UCollator* collator)
{
    UErrorCode status = U_ZERO_ERROR;
    std::array<int32_t, 256> codes{};
    const int32_t count = ucol_getReorderCodes(collator, codes.data(), static_cast<int32_t>(codes.size()), &status);
    throwOnFailure(status);
    for (int32_t i = 0; i < count; ++i) {
        text += ',' + std::to_string(codes[static_cast<std::size_t>(i)]);
    }
}

/// The tailoring, and all settings but the strength.
std::string orderOf(const UCollator* collator)
{
    UErrorCode status = U_ZERO_ERROR;
    std::string order = ucol_getLocaleByType(collator, ULOC_ACTUAL_LOCALE, &status);
    for (const UColAttribute attribute : {UCOL_FRENCH_COLLATION, UCOL_ALTERNATE_HANDLING, UCOL_CASE_FIRST,
                                          UCOL_CASE_LEVEL, UCOL_NORMALIZATION_MODE, UCOL_NUMERIC_COLLATION}) {
        order += '/' + std::to_string(ucol_getAttribute(collator, attribute, &status));
    }
    order += '/' + std::to_string(ucol_getVariableTop(collator, &status)) + '/';
    throwOnFailure(status);
    appendReorderCodes(order, collator);
    return order;
}

}  // namespace

bool isBinaryName(std::string_view name) noexcept
{
    constexpr std::string_view kBinary = "binary";
    return std::equal(name.begin(), name.end(), kBinary.begin(), kBinary.end(), [](char each, char letter) {
        return each == letter || each == static_cast<char>(letter - 'a' + 'A');
    });
}

bool isSortLanguage(const std::string& name)
{
    std::array<char, 16> language{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_getLanguage(name.c_str(), language.data(), static_cast<int32_t>(language.size()), &status);
    const std::string_view code = language.data();
    return U_SUCCESS(status) && status != U_STRING_NOT_TERMINATED_WARNING &&
           (code.empty() || code == "und" || code == "root" || *uloc_getISO3Language(language.data()) != '\0');
}

std::optional<SortName> resolveSortName(std::string_view name)
{
    IdBuffer id{};
    if (name.size() > kMostLetters || !readTag(std::string(name), id) || !isSortLanguage(id.data()) ||
        !hasSortKeywordsOnly(id.data()) || !hasCollationType(id.data())) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    CollatorPtr collator(ucol_open(id.data(), &status));
    if (status == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc();
    }
    std::string canonical = canonicalTag(id.data());
    if (U_FAILURE(status) || canonical.empty()) {
        return std::nullopt;
    }
    std::string order = orderOf(collator.get());
    std::string locale = ucol_getLocaleByType(collator.get(), ULOC_ACTUAL_LOCALE, &status);
    return SortName{std::move(canonical), std::move(order), std::move(locale), std::move(collator)};
}

}  // namespace vel::nls
