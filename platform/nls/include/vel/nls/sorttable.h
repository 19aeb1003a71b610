#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vel::nls {

/// How much of a difference counts. Each level counts what the levels before it count.
enum class SortStrength
{
    kPrimary = 0,     ///< letters
    kSecondary = 1,   ///< accents
    kTertiary = 2,    ///< case and variants
    kQuaternary = 3,  ///< what the sort shifts aside (punctuation), Hiragana against Katakana
    kIdentical = 4    ///< the code points of the decomposed text
};

class SortEngine;

/// The order of one sort: makes sort keys and compares texts. Immutable; any number of threads may use one table.
///
/// The order is ICU's for the same sort. Law, for all texts a and b and every strength:
///
///     sign(compare(a, b)) == sign(key(a) against key(b), byte by byte as unsigned, a prefix being smaller)
///
/// Keys of one sort compare with each other when name(), version() and strength are equal. They hold no zero byte. The
/// key of a text in which nothing counts (the empty text, a text of ignorable characters) is empty.
class SortTable
{
public:
    /// The table of a sort, or null when there is no such sort. `name` is a BCP 47 tag, with collation keywords where
    /// wanted, or "binary", the order of code points. A table is built once and shared by all who hold it; it is freed
    /// with the last of them. The language must be one that ICU lists, or "und", its keywords those of a sort, and
    /// their values some that there are; a language for which nothing is tailored has the root's order. Throws
    /// std::bad_alloc; nothing is kept then, and the next call tries again. Any thread.
    ///
    ///     "sv"                 -> Swedish
    ///     "SV"                 -> the same table
    ///     "de-u-co-phonebk"    -> German as in phone books
    ///     "zh-u-co-stroke"     -> Chinese by strokes
    ///     "en-u-ka-shifted"    -> punctuation is ignored up to the tertiary level
    ///     "da-u-kf-upper"      -> capitals first
    ///     "en-u-kn"            -> digits by their number
    ///     "und", "en"          -> the root's order
    ///     "binary"             -> code points
    ///     "", "en_US", "a b"   -> null: no tag
    ///     "xx", "swedish"      -> null: no language
    ///     "en-u-zz-yes"        -> null: no keyword of a sort
    ///     "fr-u-co-phonebk"    -> null: French has no such sort
    ///     "en-u-ka-what"       -> null: no such value
    static std::shared_ptr<const SortTable> open(std::string_view name);

    SortTable(std::string name, std::shared_ptr<const SortEngine> engine, std::shared_ptr<void> place);
    ~SortTable();
    SortTable(const SortTable&) = delete;
    SortTable& operator=(const SortTable&) = delete;

    /// Writes the key of `byteCount` bytes of UTF-16BE text when it fits into `capacity` bytes at `out`, and returns
    /// its length in any case; what lies at `out` is undefined when it does not fit. A lone surrogate, and an odd byte
    /// at the end, count as U+FFFD. `out` may be null when `capacity` is 0. Throws std::bad_alloc.
    std::size_t makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength, unsigned char* out,
                        std::size_t capacity) const;

    /// -1, 0 or 1. A character is a code point; what is none, such as a surrogate, counts as U+FFFD, so that the order
    /// is that of the keys of vel::encodeUtf16BigEndian's bytes. Throws std::bad_alloc.
    int compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb, SortStrength strength) const;

    /// The name in its canonical form: "SV" was opened -> "sv".
    std::string_view name() const noexcept { return m_sName; }
    /// The version of the order and of the format of the keys: keys of different versions do not compare.
    std::string version() const;
    /// Bytes that the table holds. Tables of names with the same order share them.
    std::size_t memory() const noexcept;

private:
    std::string m_sName;
    std::shared_ptr<const SortEngine> m_pEngine;
    /// Keeps the place in the list of tables; given back after the engine.
    std::shared_ptr<void> m_pPlace;
};

}  // namespace vel::nls
