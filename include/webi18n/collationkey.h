#pragma once

#include <string_view>
#include <utility>

#include "vel/core/refstring.h"
#include "vel/core/string.h"

namespace vel::i18n {

/// Compares two sort keys byte by byte as unsigned; a key that another one begins with is smaller: -1, 0 or 1.
inline int compareKeys(std::string_view a, std::string_view b) noexcept
{
    // std::char_traits<char> compares bytes as unsigned.
    const int order = a.compare(b);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

/// The sort key of one text, as bytes of its own. Keys compare when they were made by the same sort with the same
/// strength and version. A value.
class CollationKey
{
public:
    CollationKey() = default;
    explicit CollationKey(NarrowString bytes) noexcept : m_sBytes(std::move(bytes)) {}

    const NarrowString& bytes() const noexcept { return m_sBytes; }
    /// To be filled.
    NarrowString& bytes() noexcept { return m_sBytes; }
    std::string_view view() const noexcept { return m_sBytes; }
    bool isEmpty() const noexcept { return m_sBytes.isEmpty(); }
    /// compareKeys.
    int compare(const CollationKey& other) const noexcept { return compareKeys(view(), other.view()); }

    friend bool operator==(const CollationKey& a, const CollationKey& b) noexcept { return a.compare(b) == 0; }
    friend bool operator<(const CollationKey& a, const CollationKey& b) noexcept { return a.compare(b) < 0; }

private:
    NarrowString m_sBytes;
};

/// The same bytes in a string pool: a pointer and a length. Valid as long as the pool keeps them.
class RefCollationKey
{
public:
    /// Empty: null, 0.
    RefCollationKey() noexcept = default;
    explicit RefCollationKey(const RefStringTemplate<char>& bytes) noexcept : m_tBytes(bytes) {}

    const RefStringTemplate<char>& bytes() const noexcept { return m_tBytes; }
    /// To be set.
    RefStringTemplate<char>& bytes() noexcept { return m_tBytes; }
    std::string_view view() const noexcept { return m_tBytes; }
    bool isEmpty() const noexcept { return m_tBytes.isEmpty(); }
    /// compareKeys.
    int compare(const RefCollationKey& other) const noexcept { return compareKeys(view(), other.view()); }

    friend bool operator==(const RefCollationKey& a, const RefCollationKey& b) noexcept { return a.compare(b) == 0; }
    friend bool operator<(const RefCollationKey& a, const RefCollationKey& b) noexcept { return a.compare(b) < 0; }

private:
    RefStringTemplate<char> m_tBytes;
};

}  // namespace vel::i18n
