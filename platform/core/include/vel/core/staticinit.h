#pragma once

#include <atomic>

// Static data of the library must be usable from every static initialiser of a program, in whatever order its object
// files are linked. Objects with a priority are built before all objects without one, in rising order of priority.

/// Tables that need nothing else.
#define VEL_INIT_TABLES [[gnu::init_priority(1001)]]
/// Values built from the tables.
#define VEL_INIT_VALUES [[gnu::init_priority(1002)]]

namespace vel {

/// A constant that needs memory, as static data. It is built when the library is loaded; where memory is lacking then,
/// by the first use, which throws std::bad_alloc while memory is lacking still. So loading the library ends no process.
/// Usable from any thread, and from static initialisers as the priorities above allow.
///
///     VEL_INIT_TABLES const StaticValue<XmlPath> kpfRule([] { return XmlPath(L"rule"); });
template <typename T>
class StaticValue
{
public:
    using Build = T (*)();

    explicit StaticValue(Build function) noexcept : m_pBuild(function)
    {
        try {
            get();
        } catch (...) {
            // Memory was lacking. The first use tries again, and tells.
        }
    }
    StaticValue(const StaticValue&) = delete;
    StaticValue& operator=(const StaticValue&) = delete;
    ~StaticValue() { delete m_pValue.load(std::memory_order_acquire); }

    const T& get() const
    {
        const T* const value = m_pValue.load(std::memory_order_acquire);
        return value != nullptr ? *value : build();
    }
    operator const T&() const { return get(); }
    const T& operator*() const { return get(); }
    const T* operator->() const { return &get(); }

private:
    /// Of several threads that build it one wins. Rare, and so not inline.
    [[gnu::noinline]] const T& build() const
    {
        const T* const built = new T(m_pBuild());
        const T* value = nullptr;
        if (m_pValue.compare_exchange_strong(value, built, std::memory_order_acq_rel)) {
            return *built;
        }
        delete built;
        return *value;
    }

    const Build m_pBuild;
    mutable std::atomic<const T*> m_pValue{nullptr};
};

}  // namespace vel
