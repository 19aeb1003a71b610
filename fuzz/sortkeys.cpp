// Sort keys and comparison: whatever the texts, our order is that of ICU's keys, and comparing is as comparing keys.
// The first byte chooses the sort, the second the strength; the rest is UTF-16BE, the two texts parted by U+000A.

#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "../tests/support/sign.h"
#include "../tests/support/utf16text.h"
#include "require.h"
#include "vel/nls/sorttable.h"

namespace {

using fuzzing::require;
using testsupport::sign;
using testsupport::wideOf;
using vel::nls::SortStrength;
using vel::nls::SortTable;

/// Inputs name them by number, so new ones stand at the end.
constexpr const char* kTags[] = {"und", "sv", "fr-CA", "cs", "hu", "th", "ja", "ko", "zh", "en-u-ka-shifted",
                                 "da-u-kf-upper", "en-u-kn", "vi", "ar", "ko-u-co-searchjl",
                                 // Sequences of many characters, and attributes together.
                                 "my", "ta", "sv-u-kn-ka-shifted"};
constexpr UCollationStrength kStrengths[] = {UCOL_PRIMARY, UCOL_SECONDARY, UCOL_TERTIARY, UCOL_QUATERNARY,
                                             UCOL_IDENTICAL};

struct Sort
{
    std::shared_ptr<const SortTable> m_pTable;
    UCollator* m_pCollator = nullptr;
};

/// Each is opened when it is first chosen: all of them at once would make the first input a slow one.
const Sort& sortOf(std::size_t number)
{
    static std::array<Sort, std::size(kTags)> sorts{};
    Sort& sort = sorts[number % sorts.size()];
    if (sort.m_pTable == nullptr) {
        const char* tag = kTags[number % sorts.size()];
        UErrorCode status = U_ZERO_ERROR;
        char id[256];
        int32_t parsed = 0;
        uloc_forLanguageTag(tag, id, sizeof id, &parsed, &status);
        sort = {SortTable::open(tag), ucol_open(id, &status)};
        if (sort.m_pTable == nullptr || U_FAILURE(status)) {
            std::abort();
        }
    }
    return sort;
}

/// As SortTable reads it: lone surrogates and an odd byte are U+FFFD.
std::u16string decode(std::string_view bytes)
{
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>((static_cast<unsigned char>(bytes[i]) << 8) |
                                      static_cast<unsigned char>(bytes[i + 1]));
    }
    return testsupport::wellFormed(text) + (bytes.size() % 2 == 0 ? u"" : u"\uFFFD");
}

std::string keyOf(const SortTable& table, std::string_view bytes, SortStrength strength)
{
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    // Blocks of exactly the sizes: a sanitizer sees what goes beyond them.
    const std::size_t size = table.makeKey(data, bytes.size(), strength, nullptr, 0);
    const std::unique_ptr<unsigned char[]> key(new unsigned char[size]);
    require(table.makeKey(data, bytes.size(), strength, key.get(), size) == size);
    require(size == 0 || std::memchr(key.get(), 0, size) == nullptr);
    return std::string(reinterpret_cast<const char*>(key.get()), size);
}

std::string icuKeyOf(const UCollator* collator, const std::u16string& text)
{
    std::string key;
    std::size_t size = 64 + 8 * text.size();
    while (size > key.size()) {
        key.resize(size);
        size = static_cast<std::size_t>(ucol_getSortKey(collator, text.data(), static_cast<int32_t>(text.size()),
                                                        reinterpret_cast<std::uint8_t*>(key.data()),
                                                        static_cast<int32_t>(key.size())));
    }
    key.resize(size);
    return key;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    const Sort& sort = sortOf(data[0]);
    const std::size_t strength = data[1] % std::size(kStrengths);
    const auto ours = static_cast<SortStrength>(strength);
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
    const std::size_t split = std::min(bytes.find(std::string_view("\0\n", 2)), bytes.size());
    const std::string left(bytes.substr(0, split));
    const std::string right(bytes.substr(std::min(bytes.size(), split + 2)));
    ucol_setStrength(sort.m_pCollator, kStrengths[strength]);
    const std::u16string leftText = decode(left);
    const std::u16string rightText = decode(right);
    const int expected = sign(icuKeyOf(sort.m_pCollator, leftText).compare(icuKeyOf(sort.m_pCollator, rightText)));
    const std::wstring leftWide = wideOf(leftText);
    const std::wstring rightWide = wideOf(rightText);
    require(sign(keyOf(*sort.m_pTable, left, ours).compare(keyOf(*sort.m_pTable, right, ours))) == expected);
    require(sort.m_pTable->compare(leftWide.data(), leftWide.size(), rightWide.data(), rightWide.size(), ours) ==
            expected);
    return 0;
}
