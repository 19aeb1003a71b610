#include "webi18n/nlsenvironment.h"

#include "nlsenvironmentimpl.h"

namespace vel::i18n {

constinit NonOwningPtr<NLSEnvironment> NLSEnvironment::s_spDefaultEnvironment;

NLSEnvironment::NLSEnvironment() noexcept = default;

NLSEnvironment::~NLSEnvironment()
{
    if (s_spDefaultEnvironment == NonOwningPtr<NLSEnvironment>(this)) {
        s_spDefaultEnvironment = nullptr;
    }
}

Handle<NLSEnvironment> NLSEnvironment::getEnvironmentGuard()
{
    if (!s_spDefaultEnvironment.isNull()) {
        return Handle<NLSEnvironment>(s_spDefaultEnvironment.get());
    }
    const Handle<NLSEnvironmentImpl> hEnvironment = makeHandle<NLSEnvironmentImpl>();
    hEnvironment->initialize();
    s_spDefaultEnvironment = hEnvironment.get();
    return hEnvironment;
}

NonOwningPtr<NLSEnvironment> NLSEnvironment::getDefaultEnvironment() noexcept
{
    return s_spDefaultEnvironment;
}

NLSEnvironmentImpl::NLSEnvironmentImpl() = default;
NLSEnvironmentImpl::~NLSEnvironmentImpl() = default;

void NLSEnvironmentImpl::initialize()
{
    m_tLibrary.loadLibrary(L"zephnls12", kOnErrorThrow);
    m_hThreadContext = makeHandle<NLSThreadContext>(NonOwningPtr<NLSEnvironment>(this));
}

NonOwningPtr<nls_internal_wrapper::NLSLibrary> NLSEnvironmentImpl::getInternalNlsLibrary()
{
    return &m_tLibrary;
}

NLSThreadContext::NLSThreadContext(const NonOwningPtr<NLSEnvironment>& spEnv)
    : m_spEnv(spEnv), m_pGlobals(std::make_unique<nls_internal_wrapper::NLSGlobals>(m_spEnv->getInternalNlsLibrary()))
{}

NLSThreadContext::~NLSThreadContext() = default;

}  // namespace vel::i18n
