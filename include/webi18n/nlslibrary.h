#pragma once

#include "vel/core/api.h"
#include "vel/core/eonerror.h"
#include "vel/nls/nlsservice.h"

namespace vel::nls_internal_wrapper {

using nls::LanguageItem;

/// The table of the language service's entry points. Filled once, then read by the threads that share the environment.
class WEBI18N_API NLSLibrary
{
public:
    /// Empty: every entry point is null.
    NLSLibrary() noexcept;
    ~NLSLibrary();
    NLSLibrary(const NLSLibrary&) = delete;
    NLSLibrary& operator=(const NLSLibrary&) = delete;

    /// Fills the table with the linked service's entry points, initialises the service for the process, and returns
    /// true. A service that cannot be initialised is reported as "bSuccess", and the result is true all the same. The
    /// name and the mode count for nothing, deliberately: the service is bound when the program is linked.
    bool loadLibrary(const wchar_t* name, EOnError onError);

    /// Valid while this object is.
    const nls::EntryPoints& entryPoints() const noexcept { return m_tEntryPoints; }
    /// Whether loadLibrary was called: no entry point may be used else.
    bool isLoaded() const noexcept { return m_tEntryPoints.m_pCreateLoadContext != nullptr; }

private:
    void* m_hModule;  // of a service that is loaded while the program runs: always null
    nls::EntryPoints m_tEntryPoints;
};

}  // namespace vel::nls_internal_wrapper
