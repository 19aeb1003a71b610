#pragma once

#include <utility>

#include "vel/core/handle.h"

namespace vel {

/// A value whose copies share one object until one of them is changed: copying costs a count, and equal data of many
/// owners is held once. A default-constructed one holds a default T without allocating. Copies may live on different
/// threads; one CopyOnWrite object is changed by one thread at a time.
template <typename T>
class CopyOnWrite
{
public:
    CopyOnWrite() noexcept = default;
    explicit CopyOnWrite(T value) : m_hNode(makeHandle<Node>(std::move(value))) {}

    const T& get() const noexcept { return m_hNode.isNull() ? defaultValue() : m_hNode.get()->m_tValue; }
    const T& operator*() const noexcept { return get(); }
    const T* operator->() const noexcept { return &get(); }

    /// The value for changing: first unshared when others have it too. When that throws, nothing has changed.
    T& edit()
    {
        if (m_hNode.isNull()) {
            m_hNode = makeHandle<Node>(T());
        } else if (m_hNode.get()->referenceCount() > 1) {
            m_hNode = makeHandle<Node>(T(m_hNode.get()->m_tValue));
        }
        return m_hNode.get()->m_tValue;
    }
    /// Back to a default T.
    void reset() noexcept { m_hNode = Handle<Node>(); }

private:
    struct Node final : RefCounted
    {
        explicit Node(T value) : m_tValue(std::move(value)) {}
        T m_tValue;
    };

    static const T& defaultValue() noexcept
    {
        static const T kDefault{};
        return kDefault;
    }

    Handle<Node> m_hNode;
};

}  // namespace vel
