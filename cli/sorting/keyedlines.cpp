#include "sorting/keyedlines.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace cli {

static_assert(std::endian::native == std::endian::little);

KeyedLine makeKeyedLine(std::string_view key, std::string_view text) noexcept
{
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, key.data(), std::min(key.size(), sizeof bytes));
    return {__builtin_bswap64(bytes), key, text};
}

void KeyedLines::fill(std::string_view text, char separator, KeyMaker& maker)
{
    m_tLines.clear();
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
    std::sort(m_tLines.begin(), m_tLines.end(), [](const KeyedLine& a, const KeyedLine& b) {
        const int order = compareLines(a, b);
        // The lines of a round lie in one block, in the order of the input.
        return order != 0 ? order < 0 : a.m_sText.data() < b.m_sText.data();
    });
}

}  // namespace cli
