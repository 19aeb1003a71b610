#pragma once

#include <memory>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/nonowningptr.h"
#include "webi18n/nlsglobals.h"
#include "webi18n/nlslibrary.h"

namespace vel::i18n {

/// The process's environment of the language service. It lives while a guard is held:
///
///     const auto hGuard = NLSEnvironment::getEnvironmentGuard();           // at start-up, on one thread; kept
///     NLSThreadContext context(NLSEnvironment::getDefaultEnvironment());   // on each thread that collates
///     Collator collator(context, L"sv", kCollationStrengthDefault);
///
/// Taking and giving back guards is not locked: the first guard is taken before other threads ask for the environment,
/// and the last one is given back when no other thread uses it or a context made on it.
class WEBI18N_API NLSEnvironment : public RefCounted
{
public:
    /// A share in the default environment, which is made when there is none. Throws the wide C string "error" when the
    /// service fails; there still is no environment then.
    static Handle<NLSEnvironment> getEnvironmentGuard();
    /// Null while no guard is held.
    static NonOwningPtr<NLSEnvironment> getDefaultEnvironment() noexcept;

    NLSEnvironment(const NLSEnvironment&) = delete;
    NLSEnvironment& operator=(const NLSEnvironment&) = delete;
    ~NLSEnvironment() override;
    virtual NonOwningPtr<nls_internal_wrapper::NLSLibrary> getInternalNlsLibrary() = 0;

protected:
    NLSEnvironment() noexcept;

private:
    static NonOwningPtr<NLSEnvironment> s_spDefaultEnvironment;
};

/// A thread's own context of the language service. Collators are built on it and used by its thread only, or by one
/// thread at a time.
///
/// It is used as long as a guard is held. After the last guard it may only be destroyed, which closes its part of the
/// service and never reports.
class WEBI18N_API NLSThreadContext : public RefCounted
{
public:
    /// Throws the wide C string "error" when the service fails.
    explicit NLSThreadContext(const NonOwningPtr<NLSEnvironment>& spEnv);
    NLSThreadContext(const NLSThreadContext&) = delete;
    NLSThreadContext& operator=(const NLSThreadContext&) = delete;
    ~NLSThreadContext() override;

    NonOwningPtr<nls_internal_wrapper::NLSGlobals> getInternalNlsGlobals() noexcept { return m_pGlobals.get(); }

private:
    NonOwningPtr<NLSEnvironment> m_spEnv;
    std::unique_ptr<nls_internal_wrapper::NLSGlobals> m_pGlobals;
};

}  // namespace vel::i18n
