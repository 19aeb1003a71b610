#include "namedlocales.h"

#include <atomic>

#include "vel/core/texthash.h"

namespace vel::i18n_details {

std::uint32_t NamedLocales::hashOf(std::wstring_view name) noexcept
{
    const std::uint64_t seed = textSeed();
    std::uint64_t hash = name.size() ^ seed >> 32;
    for (const wchar_t character : name) {
        hash = core_details::foldedProduct(hash ^ static_cast<std::uint32_t>(foldCase(character)), seed);
    }
    return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

std::uint64_t NamedLocales::newVersion() noexcept
{
    static constinit std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

void NamedLocales::set(std::wstring_view name, const Locale& locale)
{
    const std::uint32_t hash = hashOf(name);
    m_nVersion = newVersion();
    if (LocaleMap::value_type* const* const known = m_tIndex.find(hash, IsNamed{name}); known != nullptr) {
        (*known)->second = locale;
        return;
    }
    m_tIndex.reserve(m_tIndex.size() + 1);
    // Files tend to name their locales in order.
    m_tIndex.add(hash, &*m_tInOrder.emplace_hint(m_tInOrder.end(), name, locale));
}

}  // namespace vel::i18n_details
