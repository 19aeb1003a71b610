#include "elementpool.h"

#include <utility>

namespace vel::nls {

ElementPool::~ElementPool()
{
    for (const auto& slot : m_aFree) {
        const ElementsPtr elements(slot.load());
    }
}

ElementsPtr ElementPool::take()
{
    for (auto& slot : m_aFree) {
        if (slot.load(std::memory_order_relaxed) != nullptr) {
            if (UCollationElements* elements = slot.exchange(nullptr, std::memory_order_acquire)) {
                return ElementsPtr(elements);
            }
        }
    }
    UErrorCode status = U_ZERO_ERROR;
    ElementsPtr elements(ucol_openElements(m_pCollator, u"", 0, &status));
    throwOnFailure(status);
    return elements;
}

void ElementPool::give(ElementsPtr elements) noexcept
{
    for (auto& slot : m_aFree) {
        UCollationElements* expected = nullptr;
        if (slot.compare_exchange_strong(expected, elements.get(), std::memory_order_release,
                                         std::memory_order_relaxed)) {
            static_cast<void>(elements.release());
            return;
        }
    }
}

ElementPool::Loan::Loan(ElementPool& pool, const char16_t* text, std::size_t length)
    : m_rPool(pool), m_pElements(pool.take())
{
    UErrorCode status = U_ZERO_ERROR;
    ucol_setText(m_pElements.get(), text, static_cast<int32_t>(length), &status);
    throwOnFailure(status);
}

}  // namespace vel::nls
