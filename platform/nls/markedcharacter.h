#pragma once

#include <array>
#include <cstddef>

#include "sortdata.h"

namespace vel::nls {

/// A character and the marks behind it, as they are compared: in canonical order where the sort normalizes, and with
/// those marks joined to the character that belong to it though others stand between them. So Vietnamese "ệ" is "ê"
/// with a dot however it is written. Where a call gives false, ICU has to read all of it: so with marks beyond U+FFFF,
/// which it does not bring into order everywhere.
class MarkedCharacter
{
public:
    explicit MarkedCharacter(const SortData& data) noexcept : m_rData(data) {}

    /// The character, which may be a mark itself, with what `KeyWriter` knows of it.
    bool begin(char32_t c, const Opening& opening, SortEntry alone) noexcept;
    /// The next mark.
    bool add(char32_t c, SortEntry e) noexcept;
    /// After the last mark: brings all into order and joins what belongs together.
    bool join();
    /// Whether more than marks may belong to what was joined.
    bool mayGoOn() const noexcept { return m_nPassed == 0 && m_pOpening != nullptr && !m_pOpening->m_tSlots.empty(); }

    /// After join(): hands over the entry of the character and then those of the marks that are left.
    template <class Take>
    void forEachEntry(const Take& take) const
    {
        if (m_bLetter) {
            take(m_nEntry);
        }
        for (std::size_t i = 0; i < m_nMarks; ++i) {
            take(m_aMarks[i].m_nEntry);
        }
    }

private:
    /// More marks than texts have are left to ICU.
    static constexpr std::size_t kMostMarks = 16;

    struct Mark
    {
        char32_t m_cCode;
        SortEntry m_nEntry;
        int m_nClass;
    };

    bool takeApart();
    bool beginLetter(char32_t c) noexcept;
    bool putMark(char32_t c, SortEntry e) noexcept;
    void order() noexcept;
    bool joinMark(const Mark& mark, bool& isJoined) noexcept;

    const SortData& m_rData;
    char32_t m_cLetter = 0;
    bool m_bLetter = false;
    SortEntry m_nEntry = 0;
    const Opening* m_pOpening = nullptr;
    std::array<Mark, kMostMarks> m_aMarks{};
    std::size_t m_nMarks = 0;
    std::size_t m_nPassed = 0;  ///< marks that are not joined
    char32_t m_cLast = 0;
    bool m_bInOrder = true;
};

}  // namespace vel::nls
