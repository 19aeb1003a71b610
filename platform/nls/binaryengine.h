#pragma once

#include "sortengine.h"

namespace vel::nls {

/// The order of code points. A key is the text in UTF-8, the two characters U+0000 and U+0001 as 01 01 and 01 02: no
/// zero byte, the same order. Every strength is the same.
class BinaryEngine final : public SortEngine
{
public:
    std::size_t makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength, unsigned char* out,
                        std::size_t capacity) const override;
    int compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb,
                SortStrength strength) const override;
    std::string version() const override;
    std::size_t memory() const noexcept override { return sizeof *this; }
};

}  // namespace vel::nls
