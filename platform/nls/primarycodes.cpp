#include "primarycodes.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>

namespace vel::nls {

namespace {

constexpr std::size_t kFirstLead = 0x03;
constexpr std::size_t kLeads = 0xFF - kFirstLead;
/// Bytes behind a lead: all but 00.
constexpr std::size_t kTrails = 255;
/// Bytes behind FF: 02 begins what is not known.
constexpr std::size_t kBehind = 0xFF - 0x03;
/// Gaps of more weights than this do not do without leads.
constexpr std::size_t kMostBehind = 1500;

constexpr std::size_t roundUp(std::size_t count, std::size_t unit)
{
    return (count + unit - 1) / unit;
}

}  // namespace

PrimaryCodes::PrimaryCodes(std::vector<RankedPrimary> primaries) : m_tRanked(std::move(primaries))
{
    m_tWeights.reserve(m_tRanked.size());
    for (const RankedPrimary& primary : m_tRanked) {
        m_tWeights.push_back(primary.m_nWeight);
    }
    m_tCodes.resize(m_tRanked.size());
    m_tStarts.resize(0x10001);
    for (std::size_t upper = 0, i = 0; upper < m_tStarts.size(); ++upper) {
        while (i < m_tWeights.size() && (m_tWeights[i] >> 16) < upper) {
            ++i;
        }
        m_tStarts[upper] = static_cast<std::uint32_t>(i);
    }
    if (!allot(kHan) && !allot(kCommon)) {
        // So many scripts at once: none is favoured.
        for (RankedPrimary& primary : m_tRanked) {
            primary.m_eRank = kRare;
        }
        allot(kCommon);
    }
    m_tRanked = {};
}

/// Places behind a lead: a common weight takes one, a run of rare ones shares as many as it needs.
std::size_t PrimaryCodes::leadsOf(std::size_t begin, std::size_t end, PrimaryRank lastCommon) const
{
    std::size_t places = 0;
    std::size_t run = 0;
    for (std::size_t i = begin; i < end; ++i) {
        if (m_tRanked[i].m_eRank > lastCommon) {
            ++run;
        } else {
            places += roundUp(run, kTrails) + 1;
            run = 0;
        }
    }
    return roundUp(places + roundUp(run, kTrails), kTrails);
}

std::vector<PrimaryCodes::Gap> PrimaryCodes::findGaps(PrimaryRank lastCommon) const
{
    std::vector<Gap> gaps;
    std::size_t begin = 0;
    for (std::size_t i = 0; i <= m_tRanked.size(); ++i) {
        if (i == m_tRanked.size() || m_tRanked[i].m_eRank == kHot) {
            if (i > begin) {
                gaps.push_back({begin, i, leadsOf(begin, i, lastCommon)});
            }
            begin = i + 1;
        }
    }
    return gaps;
}

/// Gives lead bytes to the gaps, the largest first, and codes to all weights. False when the leads are too few.
bool PrimaryCodes::allot(PrimaryRank lastCommon)
{
    std::vector<Gap> gaps = findGaps(lastCommon);
    std::vector<std::size_t> order(gaps.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        // What stands before all hot ones has nothing to stand behind.
        const auto sizeOf = [&](const Gap& gap) { return gap.m_nBegin == 0 ? SIZE_MAX : gap.m_nEnd - gap.m_nBegin; };
        return sizeOf(gaps[left]) > sizeOf(gaps[right]);
    });
    const auto hot = static_cast<std::size_t>(std::count_if(
        m_tRanked.begin(), m_tRanked.end(), [](const RankedPrimary& primary) { return primary.m_eRank == kHot; }));
    if (hot > kLeads) {
        return false;
    }
    std::size_t free = kLeads - hot;
    for (const std::size_t i : order) {
        Gap& gap = gaps[i];
        if (gap.m_nLeads <= free) {
            free -= gap.m_nLeads;
        } else if (gap.m_nBegin == 0 || gap.m_nEnd - gap.m_nBegin > kMostBehind) {
            return false;
        } else {
            gap.m_nLeads = 0;
        }
    }
    assign(gaps, lastCommon);
    return true;
}

void PrimaryCodes::assign(const std::vector<Gap>& gaps, PrimaryRank lastCommon)
{
    std::size_t lead = kFirstLead;
    std::size_t next = 0;
    for (std::size_t i = 0; i < m_tRanked.size(); ++i) {
        if (next < gaps.size() && gaps[next].m_nBegin == i) {
            const Gap& gap = gaps[next++];
            if (gap.m_nLeads == 0) {
                assignBehind(gap);
            } else {
                assignLeads(gap, lead, lastCommon);
                lead += gap.m_nLeads;
            }
            i = gap.m_nEnd - 1;
        } else {
            m_tCodes[i] = static_cast<std::uint32_t>(lead++);
        }
    }
}

void PrimaryCodes::assignLeads(const Gap& gap, std::size_t lead, PrimaryRank lastCommon)
{
    std::size_t place = 0;
    std::size_t inPlace = 0;
    for (std::size_t i = gap.m_nBegin; i < gap.m_nEnd; ++i) {
        const bool isRare = m_tRanked[i].m_eRank > lastCommon;
        if (inPlace > 0 && (!isRare || inPlace == kTrails)) {
            ++place;
            inPlace = 0;
        }
        const std::size_t code = (lead + place / kTrails) | ((place % kTrails + 1) << 8);
        if (isRare) {
            m_tCodes[i] = static_cast<std::uint32_t>(code | (++inPlace << 16));
        } else {
            m_tCodes[i] = static_cast<std::uint32_t>(code);
            ++place;
        }
    }
}

void PrimaryCodes::assignBehind(const Gap& gap)
{
    const std::size_t begin = m_tCodes[gap.m_nBegin - 1] | 0xFF00U;
    const std::size_t count = gap.m_nEnd - gap.m_nBegin;
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t code = count <= kBehind ? k + 3 : ((k / kTrails + 3) | ((k % kTrails + 1) << 8));
        m_tCodes[gap.m_nBegin + k] = static_cast<std::uint32_t>(begin | (code << 16));
    }
}

namespace {

constexpr unsigned kBytesBehindKnown = 6;

/// FF 02 and the bytes of a weight, 01 for 00, the first one lowest.
std::uint64_t behindKnown(std::uint32_t weight)
{
    std::uint64_t bytes = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint64_t byte = (weight >> shift) & 0xFF;
        bytes = (bytes << 8) | (byte == 0 ? 1 : byte);
    }
    return (bytes << 16) | 0x02FF;
}

}  // namespace

PrimaryCode PrimaryCodes::codeOf(std::uint32_t weight) const
{
    const auto begin = m_tWeights.begin();
    const auto next = std::upper_bound(begin + m_tStarts[weight >> 16], begin + m_tStarts[(weight >> 16) + 1], weight);
    PrimaryCode code;
    if (next == m_tWeights.begin()) {
        return code;
    }
    const auto index = static_cast<std::size_t>(next - m_tWeights.begin() - 1);
    const std::uint32_t known = m_tCodes[index];
    const auto length = static_cast<unsigned>(std::bit_width(known) + 7) / 8;
    const bool isKnown = m_tWeights[index] == weight;
    // Put together before it is stored: bytes that are stored one by one are slow to be read as words.
    const std::uint64_t behind = isKnown ? 0 : behindKnown(weight);
    const std::uint64_t first = known | (behind << (8 * length));
    const auto rest = static_cast<std::uint32_t>(behind >> (64 - 8 * length));
    std::memcpy(code.m_aBytes.data(), &first, sizeof first);
    std::memcpy(code.m_aBytes.data() + sizeof first, &rest, sizeof rest);
    code.m_nLength = static_cast<std::uint8_t>(isKnown ? length : length + kBytesBehindKnown);
    return code;
}

}  // namespace vel::nls
