#include "sortname.h"

#include <unicode/uloc.h>

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

std::optional<SortName> resolveSortName(std::string_view name)
{
    IdBuffer id{};
    if (name.size() > kMostLetters || !readTag(std::string(name), id) || !hasCollationType(id.data())) {
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
