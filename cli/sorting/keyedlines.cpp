#include "sorting/keyedlines.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace cli {

static_assert(std::endian::native == std::endian::little);

namespace {

/// Eight bytes of a key from a place on, as a big-endian number, zeros behind its end.
std::uint64_t eightBytes(std::string_view key, std::size_t from) noexcept
{
    std::uint64_t bytes = 0;
    if (key.size() >= from + sizeof bytes) {
        std::memcpy(&bytes, key.data() + from, sizeof bytes);
    } else if (key.size() > from) {
        std::memcpy(&bytes, key.data() + from, key.size() - from);
    }
    return __builtin_bswap64(bytes);
}

/// Bytes of a budget that a thread counts together.
constexpr std::size_t kCountedAtOnce = 4096;
/// Fewer lines than these are not worth an entry in the list of what is to be sorted, which would be long with many
/// pairs of equal lines.
constexpr std::ptrdiff_t kSmallGroup = 8;

/// Room for so many, without the old room beside it while the new one is made, and not for many more. The values are
/// gone.
template <typename T>
void reserveExactly(std::vector<T>& values, std::size_t count)
{
    if (values.capacity() < count || values.capacity() / 2 > count) {
        values = std::vector<T>();
        values.reserve(count);
    }
}

}  // namespace

KeyedLine makeKeyedLine(std::string_view key, std::string_view text) noexcept
{
    return {eightBytes(key, 0), key, text};
}

void KeyedLines::clear() noexcept
{
    m_tLines.clear();
    m_tOrder.clear();
    m_tFault.reset();
    m_tPool.clear();
    m_nKeyBytes = 0;
    m_nTextBytes = 0;
    m_nLongestText = 0;
    m_sRest = {};
}

void KeyedLines::fill(std::string_view text, char separator, KeyMaker& maker, MemoryBudget& budget)
{
    clear();
    reserveExactly(m_tLines, static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)));
    std::size_t counted = 0;
    std::size_t used = 0;
    for (bool isRoom = true; isRoom && !text.empty();) {
        const std::string_view line = text.substr(0, text.find(separator));
        if (!addLine(line, maker)) {
            return;
        }
        text.remove_prefix(line.size() + 1);
        used = m_nKeyBytes + m_tLines.size() * kBytesPerLine;
        if (used - counted >= kCountedAtOnce) {
            isRoom = budget.take(used - counted);
            counted = used;
        }
    }
    m_sRest = text;
    sort();
}

/// False for one that is no UTF-8.
bool KeyedLines::addLine(std::string_view line, KeyMaker& maker)
{
    vel::i18n::RefCollationKey key;
    if (const auto fault = maker.makeKey(line, m_tPool, key)) {
        m_tFault = Fault{line.data(), *fault};
        return false;
    }
    m_nKeyBytes += key.view().size();
    m_nTextBytes += line.size() + 1;
    m_nLongestText = std::max(m_nLongestText, line.size());
    m_tLines.push_back(makeKeyedLine(key.view(), line));
    return true;
}

void KeyedLines::sort()
{
    reserveExactly(m_tOrder, m_tLines.size());
    m_tOrder.resize(m_tLines.size());
    for (std::size_t i = 0; i < m_tOrder.size(); ++i) {
        m_tOrder[i].m_nLine = static_cast<std::uint32_t>(i);
    }
    std::vector<Group> open{{m_tOrder.begin(), m_tOrder.end(), 0}};
    while (!open.empty()) {
        const Group group = open.back();
        open.pop_back();
        sortGroup(group, open);
    }
}

/// By all that follows in the keys.
void KeyedLines::sortSmall(const Group& group) const
{
    std::sort(group.m_tBegin, group.m_tEnd, [&](const Entry& a, const Entry& b) {
        const int order =
            m_tLines[a.m_nLine].m_sKey.substr(group.m_nFrom).compare(m_tLines[b.m_nLine].m_sKey.substr(group.m_nFrom));
        return order != 0 ? order < 0 : a.m_nLine < b.m_nLine;
    });
}

/// By the next eight bytes of the keys. What is the same in them too, and does not end there, is added to `open`.
void KeyedLines::sortGroup(const Group& group, std::vector<Group>& open)
{
    for (auto each = group.m_tBegin; each != group.m_tEnd; ++each) {
        const KeyedLine& line = m_tLines[each->m_nLine];
        each->m_nBytes = group.m_nFrom == 0 ? line.m_nPrefix : eightBytes(line.m_sKey, group.m_nFrom);
    }
    std::sort(group.m_tBegin, group.m_tEnd, [](const Entry& a, const Entry& b) {
        return a.m_nBytes != b.m_nBytes ? a.m_nBytes < b.m_nBytes : a.m_nLine < b.m_nLine;
    });
    for (auto first = group.m_tBegin; first != group.m_tEnd;) {
        const auto last =
            std::find_if(first + 1, group.m_tEnd, [=](const Entry& each) { return each.m_nBytes != first->m_nBytes; });
        // A zero byte is none of a key's: all of them have ended.
        if (last - first > 1 && (first->m_nBytes & 0xFF) != 0) {
            const Group same = {first, last, group.m_nFrom + sizeof first->m_nBytes};
            last - first < kSmallGroup ? sortSmall(same) : open.push_back(same);
        }
        first = last;
    }
}

}  // namespace cli
