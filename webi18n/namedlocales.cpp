#include "namedlocales.h"

namespace vel::i18n_details {

namespace {

constexpr std::size_t kFirstSlots = 16;

}  // namespace

NamedLocales::NamedLocales() : m_vSlots(kFirstSlots)
{}

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
    if (LocaleMap::value_type* const known = m_vSlots[placeOf(name, hash)].m_pEntry; known != nullptr) {
        known->second = locale;
        return;
    }
    if ((m_tInOrder.size() + 1) * 2 > m_vSlots.size()) {
        grow();
    }
    // Files tend to name their locales in order.
    const auto added = m_tInOrder.emplace_hint(m_tInOrder.end(), name, locale);
    m_vSlots[placeOf(name, hash)] = {&*added, hash};
}

void NamedLocales::grow()
{
    std::vector<Slot> larger(m_vSlots.size() * 2);
    for (const Slot& each : m_vSlots) {
        if (each.m_pEntry != nullptr) {
            std::size_t place = each.m_nHash & (larger.size() - 1);
            while (larger[place].m_pEntry != nullptr) {
                place = (place + 1) & (larger.size() - 1);
            }
            larger[place] = each;
        }
    }
    m_vSlots.swap(larger);
}

}  // namespace vel::i18n_details
