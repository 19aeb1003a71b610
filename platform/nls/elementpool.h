#pragma once

#include <array>
#include <atomic>
#include <cstddef>

#include "icuhandles.h"

namespace vel::nls {

/// Element iterators that threads borrow one at a time: making one costs more than a short text.
class ElementPool
{
public:
    explicit ElementPool(const UCollator* collator) : m_pCollator(collator) {}
    ~ElementPool();
    ElementPool(const ElementPool&) = delete;
    ElementPool& operator=(const ElementPool&) = delete;

    /// An iterator at the start of `text`, for as long as the loan lives; so long must the text stay.
    class Loan
    {
    public:
        Loan(ElementPool& pool, const char16_t* text, std::size_t length);
        ~Loan() { m_rPool.give(std::move(m_pElements)); }
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;

        UCollationElements* get() const noexcept { return m_pElements.get(); }

    private:
        ElementPool& m_rPool;
        ElementsPtr m_pElements;
    };

private:
    ElementsPtr take();
    void give(ElementsPtr elements) noexcept;

    const UCollator* m_pCollator;
    std::array<std::atomic<UCollationElements*>, 16> m_aFree{};
};

}  // namespace vel::nls
