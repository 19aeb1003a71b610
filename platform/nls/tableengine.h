#pragma once

#include <array>
#include <memory>

#include "keyshort.h"
#include "sortcursor.h"
#include "sortdata.h"
#include "sortengine.h"

namespace vel::nls {

/// Keys by a table of all characters, see docs/sort-keys.md.
class TableEngine final : public SortEngine
{
public:
    TableEngine(std::unique_ptr<const SortData> data, std::string version);

    std::size_t makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength, unsigned char* out,
                        std::size_t capacity) const override;
    int compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb,
                SortStrength strength) const override;
    std::string version() const override { return m_sVersion; }
    std::size_t memory() const noexcept override { return sizeof *this + m_pData->memory(); }

    const SortData& data() const noexcept { return *m_pData; }

private:
    /// For texts of whose first characters nothing is known.
    int compareBeyondFirst(WideText a, WideText b, SortStrength strength) const;
    /// For texts whose first difference does not decide.
    int compareFurther(WideText a, WideText b, SortStrength strength) const;

    std::unique_ptr<const SortData> m_pData;
    std::string m_sVersion;
    std::array<ShortKeyMaker, 5> m_aShortKeys{};  ///< by strength
};

}  // namespace vel::nls
