#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "answers/captions.h"
#include "answers/datafiles.h"
#include "webi18n/characterset.h"
#include "webi18n/charactersetresolver.h"
#include "webi18n/currencylookup.h"
#include "webi18n/languagelists.h"
#include "webi18n/localemapping.h"
#include "webi18n/localetaglookup.h"
#include "webi18n/nlsenvironment.h"

namespace server {

/// Everything that requests read: the process's catalogues, loaded in the library's order by the thread that makes this
/// object, then immutable. What cannot be read throws XmlException or DataError. One in a process.
class Catalogues
{
public:
    explicit Catalogues(answers::DataOptions options);

    const vel::LocaleTagLookup& locales() const { return vel::LocaleTagLookup::getInstance(); }
    const vel::LocaleMapping& mapping() const noexcept { return m_tMapping; }
    const vel::CurrencyLookup& currencies() const { return vel::CurrencyLookup::getInstance(); }
    const vel::LanguageLists& languages() const noexcept { return m_tLanguages; }
    const vel::CharacterSetResolver& characterSets() const noexcept { return *m_hCharacterSets.get(); }
    /// The list of that name; a null handle when there is none.
    vel::Handle<const vel::CharacterSetList> characterSetList(const vel::String& name) const;
    /// The messages of a language and the English ones behind them.
    answers::Captions captions(const vel::String& language) const;
    /// The sorts that are offered: those of the allowed locales and well-known variants, in the order of their names.
    const std::set<vel::String>& sorts() const noexcept { return m_tSorts; }
    /// The rule that takes every text that no other rule takes; nothing when there is none.
    const std::optional<std::size_t>& lastRule() const noexcept { return m_tLastRule; }

private:
    void loadMessages();
    void loadSorts();

    answers::DataFiles m_tFiles;
    vel::LocaleMapping m_tMapping;
    vel::LanguageLists m_tLanguages;
    vel::Handle<vel::CharacterSetResolver> m_hCharacterSets;
    vel::Handle<vel::i18n::NLSEnvironment> m_hSorts;
    std::map<vel::String, answers::Captions::Table, std::less<>> m_tMessages;
    answers::Captions::Table m_hNoMessages;
    std::set<vel::String> m_tSorts;
    std::optional<std::size_t> m_tLastRule;
};

}  // namespace server
