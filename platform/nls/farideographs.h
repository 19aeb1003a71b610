#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace vel::nls {

/// The primary weights of the ideographs beyond U+FFFF in sorts that do not tailor them: there are more of these than
/// of all other characters, and few texts have one. So one table serves all sorts, and is read from ICU when the first
/// of them is met. For any number of threads.
class FarIdeographs
{
public:
    /// The one that all share. Throws std::bad_alloc.
    static std::shared_ptr<const FarIdeographs> shared();

    explicit FarIdeographs(std::shared_ptr<void> place) : m_pPlace(std::move(place)) {}

    /// 0 for a character that is none of them. Throws std::bad_alloc, after which the next call tries again.
    std::uint32_t primaryOf(char32_t c) const;

private:
    static constexpr char32_t kFirst = 0x20000;
    static constexpr char32_t kLast = 0x3FFFF;

    void read() const;

    std::shared_ptr<void> m_pPlace;
    mutable std::once_flag m_tOnce;
    mutable std::vector<std::uint32_t> m_tPrimaries;  // from kFirst on
};

}  // namespace vel::nls
