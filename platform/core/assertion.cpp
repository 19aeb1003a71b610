#include "vel/core/assertion.h"

#include <atomic>

namespace vel {

namespace {

// Constant-initialised, so that reports work from any static initialiser.
std::atomic<AssertionHandler> g_initialHandler{nullptr};
std::atomic<AssertionHandler> g_handler{nullptr};

}  // namespace

AssertionHandler setAssertionHandler(AssertionHandler handler) noexcept
{
    return g_handler.exchange(handler);
}

void setInitialAssertionHandler(AssertionHandler handler) noexcept
{
    g_initialHandler.store(handler);
}

void reportAssertion(const char* text, const char* file, int line)
{
    AssertionHandler handler = g_handler.load();
    if (handler == nullptr) {
        handler = g_initialHandler.load();
    }
    if (handler != nullptr) {
        handler({text, file, line});
    }
}

}  // namespace vel
