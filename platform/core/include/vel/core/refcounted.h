#pragma once

#include <atomic>
#include <cstdint>
#include <typeinfo>
#include <utility>

#include "vel/core/api.h"

namespace vel {

/// The base of objects that a Handle owns: an atomic reference count, which starts at 0 and is not copied with the
/// object.
class WEBI18N_API RefCounted
{
public:
    void addReference() const noexcept { m_nReferences.fetch_add(1, std::memory_order_relaxed); }
    /// Destroys the object with its last reference.
    void releaseReference() const noexcept
    {
        // A sole owner needs no locked operation: nobody else can raise the count.
        if (m_nReferences.load(std::memory_order_acquire) == 1 ||
            m_nReferences.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }
    /// The count at this moment; only a result of 1 seen by the sole owner is reliable.
    std::uint32_t referenceCount() const noexcept { return m_nReferences.load(std::memory_order_acquire); }

protected:
    RefCounted() noexcept = default;
    RefCounted(const RefCounted&) noexcept {}
    RefCounted& operator=(const RefCounted&) noexcept { return *this; }
    virtual ~RefCounted();

private:
    mutable std::atomic<std::uint32_t> m_nReferences{0};
};

namespace handle_details {

[[noreturn]] WEBI18N_API void throwInvalidHandle(const std::type_info& type);

}  // namespace handle_details

/// A shared pointer to an object derived from RefCounted. Dereferencing a null one throws InvalidHandleException.
/// Copies on different threads are independent; one Handle object is changed by one thread at a time.
template <typename T>
class Handle
{
public:
    constexpr Handle() noexcept = default;
    constexpr Handle(std::nullptr_t) noexcept {}
    /// Takes a share in `object`, which may be null.
    explicit Handle(T* object) noexcept : m_pObject(object)
    {
        if (m_pObject != nullptr) {
            m_pObject->addReference();
        }
    }
    Handle(const Handle& other) noexcept : Handle(other.m_pObject) {}
    Handle(Handle&& other) noexcept : m_pObject(std::exchange(other.m_pObject, nullptr)) {}
    template <typename U>
    requires std::is_convertible_v<U*, T*> Handle(const Handle<U>& other)
    noexcept : Handle(static_cast<T*>(other.get())) {}
#ifndef __clang__
// GCC 12 takes the unused member of a variant for a Handle that is destroyed without having been built.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
    ~Handle()
    {
        if (m_pObject != nullptr) {
            m_pObject->releaseReference();
        }
    }
#ifndef __clang__
#pragma GCC diagnostic pop
#endif
    Handle& operator=(Handle other) noexcept
    {
        swap(other);
        return *this;
    }
    void swap(Handle& other) noexcept
    {
        std::swap(m_pObject, other.m_pObject);
    }

    bool isNull() const noexcept
    {
        return m_pObject == nullptr;
    }
    explicit operator bool() const noexcept
    {
        return m_pObject != nullptr;
    }
    /// The object or null; it stays owned.
    T* get() const noexcept
    {
        return m_pObject;
    }
    T& operator*() const
    {
        return checked();
    }
    T* operator->() const
    {
        return &checked();
    }

    friend bool operator==(const Handle& a, const Handle& b) noexcept
    {
        return a.m_pObject == b.m_pObject;
    }

private:
    T& checked() const
    {
        if (m_pObject == nullptr) [[unlikely]] {
            handle_details::throwInvalidHandle(typeid(T*));
        }
        return *m_pObject;
    }

    T* m_pObject = nullptr;
};

/// A Handle to a new object.
template <typename T, typename... Arguments>
Handle<T> makeHandle(Arguments&&... arguments)
{
    return Handle<T>(new std::remove_const_t<T>(std::forward<Arguments>(arguments)...));
}

}  // namespace vel
