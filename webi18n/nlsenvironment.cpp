#include "webi18n/nlsenvironment.h"

#include <pthread.h>

#include "nlsenvironmentimpl.h"
#include "vel/core/assertion.h"

namespace vel::i18n {

namespace {

/// Guards the chain of the environments that exist. The standard library's lock may throw, a destructor may not.
class ChainLock
{
public:
    ChainLock() noexcept { pthread_mutex_lock(&s_tMutex); }
    ~ChainLock() { pthread_mutex_unlock(&s_tMutex); }
    ChainLock(const ChainLock&) = delete;
    ChainLock& operator=(const ChainLock&) = delete;

private:
    static inline pthread_mutex_t s_tMutex = PTHREAD_MUTEX_INITIALIZER;
};

}  // namespace

constinit NonOwningPtr<NLSEnvironment> NLSEnvironment::s_spDefaultEnvironment;

constinit NLSEnvironment* NLSEnvironment::s_pFirst = nullptr;

NLSEnvironment::NLSEnvironment() noexcept
{
    const ChainLock lock;
    m_pNext = s_pFirst;
    s_pFirst = this;
}

NLSEnvironment::~NLSEnvironment()
{
    if (s_spDefaultEnvironment == NonOwningPtr<NLSEnvironment>(this)) {
        s_spDefaultEnvironment = nullptr;
    }
    const ChainLock lock;
    NLSEnvironment** link = &s_pFirst;
    while (*link != this) {
        link = &(*link)->m_pNext;
    }
    *link = m_pNext;
}

bool NLSEnvironment::isAlive(const NLSEnvironment* environment) noexcept
{
    const ChainLock lock;
    const NLSEnvironment* each = s_pFirst;
    while (each != nullptr && each != environment) {
        each = each->m_pNext;
    }
    return each != nullptr;
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
