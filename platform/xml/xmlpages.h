#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace vel::xml_details {

/// From this size on a piece of memory comes from the system in huge pages, where it has them. What a large document
/// needs is filled once and soon given back; in small pages, getting them one by one would take as long as parsing.
inline constexpr std::size_t kLargePiece = std::size_t{1} << 20;

/// Uninitialised memory for any type, or null when there is none. What is never touched costs address space only, up to
/// the end of its page.
void* allocatePiece(std::size_t nSize) noexcept;
/// `nSize`: as allocated. Null is ignored.
void releasePiece(void* pMemory, std::size_t nSize) noexcept;

/// An array of plain values in such memory.
template <typename T>
class XmlPiece
{
public:
    /// Throws std::bad_alloc.
    explicit XmlPiece(std::size_t nCount) : m_pData(create(nCount), Release{nCount * sizeof(T)}) {}

    T* get() const noexcept { return m_pData.get(); }

private:
    struct Release
    {
        std::size_t m_nSize;
        void operator()(T* data) const noexcept { releasePiece(data, m_nSize); }
    };

    static T* create(std::size_t nCount);

    std::unique_ptr<T, Release> m_pData;
};

template <typename T>
T* XmlPiece<T>::create(std::size_t nCount)
{
    static_assert(std::is_trivial_v<T>);
    void* const memory = allocatePiece(nCount * sizeof(T));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return static_cast<T*>(memory);
}

}  // namespace vel::xml_details
