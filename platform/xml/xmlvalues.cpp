#include "xmlvalues.h"

#include <cstring>

#include "xmlhash.h"
#include "xmlwiden.h"

namespace vel::xml_details {

std::wstring_view XmlValues::intern(std::string_view utf8)
{
    if (utf8.empty() || utf8.size() > kLongestShared) {
        return widened(utf8);
    }
    const std::size_t hash = hashOf(utf8);
    Slot& slot = m_aSlots[hash % kSlots];
    if (slot.m_nHash != hash || slot.m_sUtf8 != utf8) {
        const std::wstring_view wide = widened(utf8);
        slot = {hash, kept(utf8), wide};
    }
    return slot.m_sWide;
}

std::wstring_view XmlValues::widened(std::string_view utf8)
{
    wchar_t* const text = m_tArena.reserveText(utf8.size());
    const std::size_t length = widen(utf8.data(), utf8.size(), text);
    m_tArena.commitText(length);
    return {text, length};
}

std::string_view XmlValues::kept(std::string_view utf8)
{
    char* const bytes = static_cast<char*>(m_tArena.allocate(utf8.size()));
    std::memcpy(bytes, utf8.data(), utf8.size());
    return {bytes, utf8.size()};
}

}  // namespace vel::xml_details
