#include "sequenceflags.h"

namespace vel::nls {

namespace {

void markNeighbours(SortPages& pages, const std::u32string& text)
{
    for (std::size_t i = 1; i < text.size(); ++i) {
        // A mark finds the first character by its care; what stands between them tells nothing of it.
        if (!isMark(text[i]) || i > 1) {
            pages.set(text[i - 1], pages.find(text[i - 1]) | entry::kOpen);
            pages.set(text[i], pages.find(text[i]) | entry::kInner);
        }
    }
}

/// Syllables that only ICU reads: it looks up their letters, which may join what stands beside.
void markSyllables(SortPages& pages)
{
    constexpr char32_t kFirst = 0xAC00;
    constexpr char32_t kLast = 0xD7A3;
    for (char32_t c = kFirst; c <= kLast; ++c) {
        if (entry::isKind(pages.find(c), kSlowKind)) {
            pages.set(c, pages.find(c) | entry::kInner | entry::kOpen);
        }
    }
}

}  // namespace

void markSequences(SortPages& pages, const SortContexts& contexts)
{
    for (const std::u32string& text : contexts.m_tContractions) {
        markNeighbours(pages, text);
    }
    for (const std::u32string& text : contexts.m_tPrefixed) {
        markNeighbours(pages, text);
    }
    markSyllables(pages);
}

}  // namespace vel::nls
