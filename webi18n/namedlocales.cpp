#include "namedlocales.h"

namespace vel::i18n_details {

std::uint32_t NamedLocales::hashOf(std::wstring_view name) noexcept
{
    std::uint64_t hash = name.size();
    for (const wchar_t character : name) {
        hash = (hash ^ static_cast<std::uint32_t>(foldCase(character))) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 32;
    }
    return static_cast<std::uint32_t>(hash);
}

void NamedLocales::set(std::wstring_view name, const Locale& locale)
{
    const std::uint32_t hash = hashOf(name);
    m_nStamp = newStamp();
    if (LocaleMap::value_type* const* const known = m_tIndex.find(hash, IsNamed{name}); known != nullptr) {
        (*known)->second = locale;
        return;
    }
    m_tIndex.reserve(m_tIndex.size() + 1);
    // Files tend to name their locales in order.
    m_tIndex.add(hash, &*m_tInOrder.emplace_hint(m_tInOrder.end(), name, locale));
}

}  // namespace vel::i18n_details
