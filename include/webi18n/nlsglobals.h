#pragma once

#include "vel/core/api.h"
#include "vel/core/nonowningptr.h"
#include "vel/nls/nlsservice.h"
#include "webi18n/nlslibrary.h"

namespace vel::nls_internal_wrapper {

/// One initialised context of the language service: a load context and the record that the service keeps for a thread.
/// Used by one thread at a time, with all that is built on it. The library must outlive its use, not its destruction.
class WEBI18N_API NLSGlobals
{
public:
    /// Stores the library and initialises. Throws the wide C string "error" (a `const wchar_t*`) when the service
    /// fails; nothing is left open then. A library that was not loaded is reported as "m_pLibrary->isLoaded()", and
    /// counts as a service that fails.
    explicit NLSGlobals(const NonOwningPtr<NLSLibrary>& pLibrary);
    /// terminate(), also where the library is gone: never a report.
    ~NLSGlobals();
    NLSGlobals(const NLSGlobals&) = delete;
    NLSGlobals& operator=(const NLSGlobals&) = delete;

    /// The constructor's and destructor's work; each runs once.
    void initialize();
    void terminate();

    const NonOwningPtr<NLSLibrary>& library() const noexcept { return m_pLibrary; }
    /// What every operation of the service takes that works for a thread. It stays where it is.
    nls::ContextRecord* contextRecord() noexcept { return &m_tContext; }

private:
    NonOwningPtr<NLSLibrary> m_pLibrary;
    nls::LoadContext* m_hLoadContext = nullptr;
    nls::ContextRecord m_tContext;
    nls::EntryPoints m_tEntryPoints;  // the library's: what is open is closed though the library is gone
};

}  // namespace vel::nls_internal_wrapper
