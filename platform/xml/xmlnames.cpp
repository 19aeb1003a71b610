#include "xmlnames.h"

#include <cstring>
#include <new>

#include "xmlhash.h"
#include "xmlwiden.h"

namespace vel::xml_details {

namespace {

XmlNameKind kindOf(std::wstring_view qualified) noexcept
{
    if (qualified == L"xmlns" || qualified.starts_with(L"xmlns:")) {
        return kNamespaceDeclaration;
    }
    return qualified.find(L':') == qualified.npos ? kUnprefixedName : kPrefixedName;
}

}  // namespace

const XmlName* XmlNames::lookUp(const char* utf8)
{
    const std::string_view name(utf8);
    const std::size_t hash = hashOf(name);
    const std::size_t mask = m_tSlots.size() - 1;
    for (std::size_t probe = 0; probe < kProbes; ++probe) {
        const Slot& slot = m_tSlots[(hash + probe) & mask];
        if (slot.m_pName == nullptr) {
            break;
        }
        if (slot.m_nHash == hash && name == std::string_view(slot.m_pName->m_pUtf8, slot.m_pName->m_nUtf8Size)) {
            return slot.m_pName;
        }
    }
    const XmlName* const created = create(utf8, name.size());
    if (++m_nUsed * 2 > m_tSlots.size()) {
        grow();
    }
    place({hash, created});
    return created;
}

const XmlName* XmlNames::create(const char* utf8, std::size_t size)
{
    char* const bytes = static_cast<char*>(m_tArena.allocate(size + 1));
    std::memcpy(bytes, utf8, size + 1);
    wchar_t* const wide = m_tArena.reserveText(size);
    const std::wstring_view qualified(wide, widen(bytes, size, wide));
    m_tArena.commitText(qualified.size());
    const std::wstring_view local = qualified.substr(qualified.rfind(L':') + 1);
    return new (m_tArena.allocate(sizeof(XmlName))) XmlName{qualified, local, bytes, size, kindOf(qualified)};
}

void XmlNames::grow()
{
    std::vector<Slot> old(m_tSlots.size() * 2);
    old.swap(m_tSlots);
    for (const Slot& slot : old) {
        if (slot.m_pName != nullptr) {
            place(slot);
        }
    }
}

void XmlNames::place(const Slot& slot) noexcept
{
    const std::size_t mask = m_tSlots.size() - 1;
    for (std::size_t probe = 0; probe < kProbes; ++probe) {
        Slot& free = m_tSlots[(slot.m_nHash + probe) & mask];
        if (free.m_pName == nullptr) {
            free = slot;
            return;
        }
    }
}

}  // namespace vel::xml_details
