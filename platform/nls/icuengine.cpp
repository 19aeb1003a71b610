#include "icuengine.h"

#include <algorithm>

#include "sorttext.h"
#include "threadscratch.h"

namespace vel::nls {

namespace {

constexpr UCollationStrength kStrengths[] = {UCOL_PRIMARY, UCOL_SECONDARY, UCOL_TERTIARY, UCOL_QUATERNARY,
                                             UCOL_IDENTICAL};

}  // namespace

std::string collationVersion(const UCollator* collator)
{
    UVersionInfo version{};
    ucol_getVersion(collator, version);
    UVersionInfo tables{};
    ucol_getUCAVersion(collator, tables);
    char text[U_MAX_VERSION_STRING_LENGTH + 1]{};
    u_versionToString(version, text);
    std::string result = text;
    u_versionToString(tables, text);
    return result + "-" + text;
}

IcuEngine::IcuEngine(const UCollator* collator)
{
    for (std::size_t i = 0; i < m_aCollators.size(); ++i) {
        m_aCollators[i] = cloneCollator(collator);
        ucol_setStrength(m_aCollators[i].get(), kStrengths[i]);
    }
}

std::size_t IcuEngine::makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength,
                               unsigned char* out, std::size_t capacity) const
{
    const ThreadScratch text(byteCount + 2);
    const std::size_t units = decodeBigEndian(utf16be, byteCount, text.as<char16_t>());
    const UCollator* collator = m_aCollators[static_cast<std::size_t>(strength)].get();
    ThreadScratch key(4 * units + 64);
    const auto make = [&] {
        return static_cast<std::size_t>(ucol_getSortKey(collator, text.as<char16_t>(), static_cast<int32_t>(units),
                                                        key.data(), static_cast<int32_t>(key.size())));
    };
    std::size_t size = make();
    if (size > key.size()) {
        ThreadScratch larger(size);
        key.swap(larger);
        size = make();
    }
    // The last byte is the zero that ends ICU's keys.
    while (size > 0 && key.data()[size - 1] <= 1) {
        --size;
    }
    if (size <= capacity) {
        std::copy_n(key.data(), size, out);
    }
    return size;
}

std::string IcuEngine::version() const
{
    return collationVersion(m_aCollators[0].get()) + "/icu";
}

}  // namespace vel::nls
