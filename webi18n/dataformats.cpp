#include "dataformats.h"

#include <cstring>
#include <cwchar>

namespace vel::i18n_details {

namespace {

constexpr std::size_t kFirstSlots = 1024;
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;

std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) noexcept
{
    hash = (hash ^ word) * kMultiplier;
    return hash ^ (hash >> 32);
}

}  // namespace

/// Two characters a step.
std::uint32_t DataFormats::hashOf(std::wstring_view text) noexcept
{
    std::uint64_t hash = text.size();
    std::size_t i = 0;
    for (; i + 2 <= text.size(); i += 2) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        hash = mixed(hash, word);
    }
    if (i < text.size()) {
        hash = mixed(hash, static_cast<std::uint32_t>(text[i]));
    }
    return static_cast<std::uint32_t>(hash);
}

/// The place of the text, or the free place where it would stand.
std::size_t DataFormats::placeOf(std::wstring_view text, std::uint32_t hash) const noexcept
{
    const std::size_t mask = m_vSlots.size() - 1;
    std::size_t place = hash & mask;
    for (;; place = (place + 1) & mask) {
        const Slot& slot = m_vSlots[place];
        const bool mayBeIt = slot.m_nHash == hash && slot.m_nLength == text.size();
        if (slot.m_nLength == 0 ||
            (mayBeIt && std::wmemcmp(m_vCharacters.data() + slot.m_nStart, text.data(), text.size()) == 0)) {
            return place;
        }
    }
}

void DataFormats::add(std::wstring_view text)
{
    if (text.empty()) {
        return;
    }
    makeRoom();
    const std::uint32_t hash = hashOf(text);
    Slot& slot = m_vSlots[placeOf(text, hash)];
    if (slot.m_nLength == 0) {
        const std::uint32_t start = static_cast<std::uint32_t>(m_vCharacters.size());
        m_vCharacters.insert(m_vCharacters.end(), text.begin(), text.end());
        slot = {hash, start, static_cast<std::uint32_t>(text.size())};
        ++m_nTexts;
    }
}

bool DataFormats::contains(std::wstring_view text) const noexcept
{
    return !text.empty() && !m_vSlots.empty() && m_vSlots[placeOf(text, hashOf(text))].m_nLength != 0;
}

void DataFormats::clear() noexcept
{
    std::vector<Slot>().swap(m_vSlots);
    std::vector<wchar_t>().swap(m_vCharacters);
    m_nTexts = 0;
}

/// For one text more.
void DataFormats::makeRoom()
{
    if ((m_nTexts + 1) * 2 <= m_vSlots.size()) {
        return;
    }
    std::vector<Slot> larger(m_vSlots.empty() ? kFirstSlots : m_vSlots.size() * 2);
    for (const Slot& each : m_vSlots) {
        if (each.m_nLength != 0) {
            std::size_t place = each.m_nHash & (larger.size() - 1);
            while (larger[place].m_nLength != 0) {
                place = (place + 1) & (larger.size() - 1);
            }
            larger[place] = each;
        }
    }
    m_vSlots.swap(larger);
}

}  // namespace vel::i18n_details
