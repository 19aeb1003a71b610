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

}  // namespace

KeyedLine makeKeyedLine(std::string_view key, std::string_view text) noexcept
{
    return {eightBytes(key, 0), key, text};
}

void KeyedLines::fill(std::string_view text, char separator, KeyMaker& maker)
{
    m_tLines.clear();
    m_tOrder.clear();
    m_tFault.reset();
    m_tPool.clear();
    m_tLines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)));
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find(separator));
        vel::i18n::RefCollationKey key;
        if (const auto fault = maker.makeKey(line, m_tPool, key)) {
            m_tFault = Fault{line.data(), *fault};
            return;
        }
        m_tLines.push_back(makeKeyedLine(key.view(), line));
        text.remove_prefix(line.size() + 1);
    }
    sort();
}

void KeyedLines::sort()
{
    m_tOrder.reserve(m_tLines.size());
    for (const KeyedLine& each : m_tLines) {
        m_tOrder.push_back({each.m_nPrefix, eightBytes(each.m_sKey, sizeof each.m_nPrefix),
                            static_cast<std::uint32_t>(m_tOrder.size())});
    }
    std::sort(m_tOrder.begin(), m_tOrder.end(), [this](const Entry& a, const Entry& b) {
        if (a.m_nFirst != b.m_nFirst) {
            return a.m_nFirst < b.m_nFirst;
        }
        if (a.m_nSecond != b.m_nSecond) {
            return a.m_nSecond < b.m_nSecond;
        }
        const int order = m_tLines[a.m_nLine].m_sKey.compare(m_tLines[b.m_nLine].m_sKey);
        return order != 0 ? order < 0 : a.m_nLine < b.m_nLine;
    });
}

}  // namespace cli
