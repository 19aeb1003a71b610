#include "xmlnames.h"

#include <cstring>
#include <new>

#include "xmlwiden.h"

namespace vel::xml_details {

namespace {

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;

template <typename Word>
std::uint64_t load(const char* bytes) noexcept
{
    Word word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

std::uint64_t mix(std::uint64_t hash, std::uint64_t word) noexcept
{
    hash = (hash ^ word) * kMultiplier;
    return hash ^ (hash >> 32);
}

/// Reads whole words; the last ones overlap instead of being pieced together from bytes.
std::size_t hashName(std::string_view name) noexcept
{
    const char* const data = name.data();
    const std::size_t size = name.size();
    std::uint64_t hash = size;
    if (size < 4) {
        // Front, middle and last byte are all bytes of so short a name; an empty one does not occur.
        const std::uint64_t front = static_cast<unsigned char>(data[0]);
        const std::uint64_t middle = static_cast<unsigned char>(data[size / 2]);
        return mix(hash, front << 16 | middle << 8 | static_cast<unsigned char>(data[size - 1]));
    }
    if (size < 8) {
        return mix(hash, load<std::uint32_t>(data) << 32 | load<std::uint32_t>(data + size - 4));
    }
    for (std::size_t i = 0; i + 8 < size; i += 8) {
        hash = mix(hash, load<std::uint64_t>(data + i));
    }
    return mix(hash, load<std::uint64_t>(data + size - 8));
}

}  // namespace

const XmlName* XmlNames::lookUp(const char* utf8)
{
    const std::string_view name(utf8);
    const std::size_t hash = hashName(name);
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
    const bool isNamespace = qualified == L"xmlns" || qualified.starts_with(L"xmlns:");
    return new (m_tArena.allocate(sizeof(XmlName))) XmlName{qualified, local, bytes, size, isNamespace};
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
