#include "webi18n/nlslibrary.h"

#include "vel/core/assertion.h"
#include "vel/core/dynamicloader.h"

namespace vel::nls_internal_wrapper {

NLSLibrary::NLSLibrary() noexcept : m_hModule(nullptr), m_tEntryPoints()
{}

NLSLibrary::~NLSLibrary()
{
    if (m_hModule != nullptr) {
        unloadModule(m_hModule, kOnErrorReturn);
    }
}

bool NLSLibrary::loadLibrary(const wchar_t* /*name*/, EOnError /*onError*/)
{
    m_tEntryPoints = nls::linkedService();
    const bool bSuccess = m_tEntryPoints.m_pInitializeProcess() == 0;
    VEL_ASSERT(bSuccess);
    return true;
}

}  // namespace vel::nls_internal_wrapper
