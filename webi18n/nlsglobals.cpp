#include "webi18n/nlsglobals.h"

#include "vel/core/assertion.h"

namespace vel::nls_internal_wrapper {

namespace {

/// What callers of this wrapper catch: the text itself, no exception object.
[[noreturn]] void throwError()
{
    const wchar_t* const error = L"error";
    throw error;
}

}  // namespace

NLSGlobals::NLSGlobals(const NonOwningPtr<NLSLibrary>& pLibrary) : m_pLibrary(pLibrary), m_tContext(), m_tEntryPoints()
{
    initialize();
}

NLSGlobals::~NLSGlobals()
{
    terminate();
}

void NLSGlobals::initialize()
{
    VEL_ASSERT(m_pLibrary->isLoaded());
    if (!m_pLibrary->isLoaded()) {
        throwError();
    }
    m_tEntryPoints = m_pLibrary->entryPoints();
    const nls::EntryPoints& service = m_tEntryPoints;
    m_hLoadContext = service.m_pCreateLoadContext(nullptr, 0);
    if (m_hLoadContext == nullptr) {
        throwError();
    }
    int status = 0;
    nls::GlobalArea* const globalArea = service.m_pCreateGlobalArea(m_hLoadContext, 1, &status);
    if (globalArea != nullptr) {
        service.m_pInitThreadContext(&m_tContext, globalArea, 0, 0);
        return;
    }
    // The handle keeps its value: no destructor runs for an object whose constructor throws.
    service.m_pFreeLoadContext(m_hLoadContext);
    throwError();
}

void NLSGlobals::terminate()
{
    if (m_hLoadContext != nullptr) {
        m_tEntryPoints.m_pTerminateThreadContext(&m_tContext);
        m_tEntryPoints.m_pFreeLoadContext(m_hLoadContext);
    }
}

}  // namespace vel::nls_internal_wrapper
