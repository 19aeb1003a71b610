#include "sortpages.h"

#include <algorithm>

namespace vel::nls {

namespace {

using Page = std::array<SortEntry, SortPages::kPageSize>;

constexpr Page pageOf(SortEntry e)
{
    Page page{};
    for (SortEntry& slot : page) {
        slot = e;
    }
    return page;
}

constexpr Page kSlowPage = pageOf(entry::special(kSlowKind));
constexpr Page kSurrogatePage = pageOf(entry::special(kSurrogateKind));

}  // namespace

SortPages::SortPages()
{
    m_aPages.fill(kSlowPage.data());
    std::fill(m_aPages.begin() + 0xD8, m_aPages.begin() + 0xE0, kSurrogatePage.data());
}

void SortPages::set(char32_t c, SortEntry e)
{
    const std::size_t page = c >> 8;
    if (m_aWritable[page] == nullptr) {
        m_tOwn.push_back(std::make_unique_for_overwrite<SortEntry[]>(kPageSize));
        m_aWritable[page] = m_tOwn.back().get();
        std::copy_n(m_aPages[page], kPageSize, m_aWritable[page]);
        m_aPages[page] = m_aWritable[page];
    }
    m_aWritable[page][c & 0xFF] = e;
}

}  // namespace vel::nls
