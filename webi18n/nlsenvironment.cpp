#include "webi18n/nlsenvironment.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "nlsenvironmentimpl.h"
#include "vel/core/assertion.h"

namespace vel::i18n {

namespace {

/// The environments that exist. Never destroyed: a guard may be given back after this library's static objects are
/// gone.
struct Registry
{
    std::mutex m_tMutex;
    std::vector<const NLSEnvironment*> m_vEnvironments;
};

Registry& registry()
{
    static Registry* const kRegistry = new Registry;
    return *kRegistry;
}

}  // namespace

constinit NonOwningPtr<NLSEnvironment> NLSEnvironment::s_spDefaultEnvironment;

NLSEnvironment::NLSEnvironment()
{
    Registry& all = registry();
    const std::lock_guard<std::mutex> lock(all.m_tMutex);
    all.m_vEnvironments.push_back(this);
}

NLSEnvironment::~NLSEnvironment()
{
    if (s_spDefaultEnvironment == NonOwningPtr<NLSEnvironment>(this)) {
        s_spDefaultEnvironment = nullptr;
    }
    Registry& all = registry();
    const std::lock_guard<std::mutex> lock(all.m_tMutex);
    std::erase(all.m_vEnvironments, this);
}

bool NLSEnvironment::isAlive(const NLSEnvironment* environment)
{
    Registry& all = registry();
    const std::lock_guard<std::mutex> lock(all.m_tMutex);
    return std::find(all.m_vEnvironments.begin(), all.m_vEnvironments.end(), environment) != all.m_vEnvironments.end();
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

NLSThreadContext::~NLSThreadContext()
{
    if (NLSEnvironment::isAlive(m_spEnv.get())) {
        return;
    }
    // The globals' own destructor would call through the library of an environment that is gone.
    static_cast<void>(m_pGlobals.release());
    try {
        VEL_FAIL("NLSEnvironment::isAlive(m_spEnv)");
    } catch (...) {  // a handler may throw, a destructor may not
    }
}

}  // namespace vel::i18n
