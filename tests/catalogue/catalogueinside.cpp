#include "catalogueinside.h"

#include "localetaglookupstate.h"

namespace testsupport {

namespace {

using State = std::unique_ptr<vel::LocaleTagLookupState>;

// The member is private: an explicit instantiation may name it all the same.
State vel::LocaleTagLookup::*stateMember();
template <State vel::LocaleTagLookup::*member>
struct Opener
{
    friend State vel::LocaleTagLookup::*stateMember() { return member; }
};
template struct Opener<&vel::LocaleTagLookup::m_pState>;

std::vector<std::string> keysOf(const vel::i18n_details::NamedLocales& locales)
{
    std::vector<std::string> keys;
    for (const auto& [name, locale] : locales.inOrder()) {
        keys.push_back(vel::toUtf8Lossy(name.view()));
    }
    return keys;
}

}  // namespace

std::vector<std::string> keysOfAll(const vel::LocaleTagLookup& lookup)
{
    return keysOf((lookup.*stateMember())->m_tAllLocales);
}

std::vector<std::string> keysOfAllowed(const vel::LocaleTagLookup& lookup)
{
    return keysOf((lookup.*stateMember())->m_tSupportedLocales);
}

}  // namespace testsupport
