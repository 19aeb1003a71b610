#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "vel/core/autobuffer.h"
#include "vel/core/string.h"
#include "vel/core/stringpool.h"
#include "webi18n/collator.h"

namespace answers {

/// There is no sort of a name; the text names it, the names that come nearest, and what is accepted.
class NoSuchSort : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What a thread needs to make keys: a context of its own, a collator on it, and room for wide text. An environment's
/// guard must be held as long as it lives.
class KeyMaker
{
public:
    /// Throws NoSuchSort.
    KeyMaker(const vel::String& sort, vel::i18n::CollationStrength strength);

    /// Puts the key of UTF-8 text into the pool. `key` refers to it. Returns nothing, or the offset of the first byte
    /// that is no UTF-8.
    std::optional<std::size_t> makeKey(std::string_view utf8, vel::NarrowStringPool& pool,
                                       vel::i18n::RefCollationKey& key);

    vel::i18n::Collator& collator() noexcept { return m_tCollator; }

private:
    vel::i18n::NLSThreadContext m_tContext;
    vel::i18n::Collator m_tCollator;
    vel::AutoBuffer<wchar_t, 1024> m_tWide;
};

/// Whether the service has a sort of that name. A collator would not tell: it keeps the sort that it had.
bool isSort(vel::i18n::NLSThreadContext& context, const vel::String& name);

}  // namespace answers
