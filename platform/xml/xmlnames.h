#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "xmlnode.h"

namespace vel::xml_details {

/// The names of a document, each held once: an open hash table. What finds no place within a few probes is not shared,
/// so that names chosen to collide cost no more than others.
class XmlNames
{
public:
    explicit XmlNames(XmlArena& arena) : m_tArena(arena), m_tSlots(kInitialSlots) {}

    /// The name of a zero-terminated, well-formed UTF-8 text. `guess`: a name that it may well be again, or null.
    const XmlName* intern(const char* utf8, const XmlName* guess)
    {
        return guess != nullptr && std::strcmp(guess->m_pUtf8, utf8) == 0 ? guess : lookUp(utf8);
    }

private:
    struct Slot
    {
        std::size_t m_nHash;
        const XmlName* m_pName;
    };
    static constexpr std::size_t kInitialSlots = 64;
    static constexpr std::size_t kProbes = 16;

    const XmlName* lookUp(const char* utf8);
    const XmlName* create(const char* utf8, std::size_t size);
    void grow();
    void place(const Slot& slot) noexcept;

    XmlArena& m_tArena;
    std::vector<Slot> m_tSlots;
    std::size_t m_nUsed = 0;
};

}  // namespace vel::xml_details
