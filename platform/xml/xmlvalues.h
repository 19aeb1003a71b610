#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "xmlarena.h"

namespace vel::xml_details {

/// The attribute values of a document. Short ones that come back, such as the property names of thousands of
/// definitions, mostly are held once: the last value of each hash is remembered.
class XmlValues
{
public:
    explicit XmlValues(XmlArena& arena) noexcept : m_tArena(arena) {}

    /// The wide form of well-formed UTF-8.
    std::wstring_view intern(std::string_view utf8);

private:
    static constexpr std::size_t kSlots = 256;
    static constexpr std::size_t kLongestShared = 32;
    struct Slot
    {
        std::size_t m_nHash = 0;
        std::string_view m_sUtf8;
        std::wstring_view m_sWide;
    };

    std::wstring_view widened(std::string_view utf8);
    std::string_view kept(std::string_view utf8);

    XmlArena& m_tArena;
    std::array<Slot, kSlots> m_aSlots;
};

}  // namespace vel::xml_details
