#pragma once

#include "vel/core/api.h"

namespace vel {

/// What is known of a broken internal invariant. The pointers refer to string literals.
struct AssertionReport
{
    const char* m_pText;  ///< the condition's source text, or a message
    const char* m_pFile;  ///< source file
    int m_nLine;          ///< source line, from 1
};

/// Receives assertion reports, on the thread that broke the invariant. May return, or throw; what follows a report is
/// memory-safe in both cases.
using AssertionHandler = void (*)(const AssertionReport&);

/// Replaces the process-wide handler and returns the one before. A null `handler` restores the initial one, which
/// passes the report to the logger when the log library is linked and otherwise ignores it. Any thread.
WEBI18N_API AssertionHandler setAssertionHandler(AssertionHandler handler) noexcept;

/// Installs what the initial handler does; called once by the log library at load.
void setInitialAssertionHandler(AssertionHandler handler) noexcept;

/// Hands a report to the current handler. Use VEL_ASSERT and its siblings, which fill in the place.
WEBI18N_API void reportAssertion(const char* text, const char* file, int line);

}  // namespace vel

/// Reports under the given text when the condition is false. The code after it must be safe for that case too.
#define VEL_ASSERT_TEXT(condition, text)                        \
    do {                                                        \
        if (!(condition)) [[unlikely]]                          \
            ::vel::reportAssertion((text), __FILE__, __LINE__); \
    } while (false)

/// Reports the condition's own text when it is false.
#define VEL_ASSERT(condition) VEL_ASSERT_TEXT(condition, #condition)

/// Reports unconditionally.
#define VEL_FAIL(text) ::vel::reportAssertion((text), __FILE__, __LINE__)
