#pragma once

#include <cstddef>
#include <typeinfo>

#include "vel/core/assertion.h"
#include "vel/core/handle.h"

namespace vel {

/// A pointer that owns nothing. Dereferencing a null one is reported as "m_p != 0" and then, when the handler returned,
/// throws InvalidHandleException: nothing is read through it.
template <typename T>
class NonOwningPtr
{
public:
    constexpr NonOwningPtr() noexcept = default;
    constexpr NonOwningPtr(T* object) noexcept : m_p(object) {}

    bool isNull() const noexcept { return m_p == nullptr; }
    T* get() const noexcept { return m_p; }
    T& operator*() const { return checked(); }
    T* operator->() const { return &checked(); }

    friend bool operator==(const NonOwningPtr&, const NonOwningPtr&) noexcept = default;

private:
    T& checked() const
    {
        if (m_p == nullptr) [[unlikely]] {
            failNull();
        }
        return *m_p;
    }
    /// By itself, so that a caller keeps nothing across the report.
    [[noreturn]] static void failNull()
    {
        VEL_FAIL("m_p != 0");
        handle_details::throwInvalidHandle(typeid(T));
    }

    T* m_p = nullptr;
};

}  // namespace vel
