#pragma once

#include "webi18n/nlsenvironment.h"

namespace vel::i18n {

/// The environment with the library's table and a thread context of its own.
class NLSEnvironmentImpl final : public NLSEnvironment
{
public:
    NLSEnvironmentImpl();
    ~NLSEnvironmentImpl() override;

    /// Loads the library and makes the default thread context, in place of the one before. Throws the wide C string
    /// "error".
    void initialize();
    NonOwningPtr<nls_internal_wrapper::NLSLibrary> getInternalNlsLibrary() override;

private:
    nls_internal_wrapper::NLSLibrary m_tLibrary;
    Handle<NLSThreadContext> m_hThreadContext;
};

}  // namespace vel::i18n
