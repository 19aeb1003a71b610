#pragma once

#include <array>

#include "icuhandles.h"
#include "sortengine.h"

namespace vel::nls {

/// ICU's own keys, without what ends them: for the sorts that the tables do not hold (a case level between accents and
/// variants). ICU's bytes 01 that end an empty level are dropped at the end of a key; they are lower than all others,
/// and so is the end of a key.
class IcuEngine final : public SortEngine
{
public:
    /// Throws std::bad_alloc.
    explicit IcuEngine(const UCollator* collator);

    std::size_t makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength, unsigned char* out,
                        std::size_t capacity) const override;
    std::string version() const override;
    std::size_t memory() const noexcept override { return sizeof *this; }

private:
    /// One for each strength: only the constant functions of a collator may be called by several threads.
    std::array<CollatorPtr, 5> m_aCollators;
};

/// ICU's version of the order of a collator.
std::string collationVersion(const UCollator* collator);

}  // namespace vel::nls
