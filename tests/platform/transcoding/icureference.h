#pragma once

#include <unicode/ucnv.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace transcodingtests {

/// ICU's converter of a name, asked for whole texts: the plain way, beside which the library's loops stand.
class IcuReference
{
public:
    explicit IcuReference(const std::string& name);

    /// The bytes of a text of scalar values, or nothing when one is not in the set.
    std::optional<std::string> encode(std::wstring_view text) const;

    struct Decoded
    {
        std::wstring m_sText;
        std::optional<std::size_t> m_nFault;  ///< offset of the sequence at fault
    };
    Decoded decode(std::string_view bytes) const;

    /// Bytes of the set's substitute.
    std::string substitute() const;

private:
    struct Close
    {
        void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
    };
    std::unique_ptr<UConverter, Close> m_pConverter;
};

/// ICU's own names of all its converters.
std::vector<std::string> allIcuNames();
/// The one of them that a set's name stands for.
std::string icusOwnName(const std::string& name);

/// Sets of the web: a name for each converter that an encoding of today's pages needs.
const std::vector<std::string>& webNames();

/// "U+20AC"
std::string shown(std::uint32_t code);
/// Bytes in hexadecimal.
std::string hex(std::string_view bytes);

}  // namespace transcodingtests
