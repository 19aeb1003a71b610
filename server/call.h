#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "answers/json.h"
#include "catalogues.h"
#include "http.h"
#include "metrics.h"
#include "qualitylist.h"
#include "query.h"
#include "webi18n/characterset.h"

namespace server {

/// Which locale and language a request gets, and why.
struct Resolution
{
    vel::LocaleMappingExplanation m_tWhy;            ///< of the entry that decided, else of the best one
    std::vector<vel::LocaleMappingRule> m_tSkipped;  ///< of every entry that was tried
    QualityList m_tList;                             ///< the header
    const QualityEntry* m_pDecided = nullptr;        ///< in the list; null when none did
};

/// One request on its way through the library. Its functions throw Refusal for what the client did wrong.
class Call
{
public:
    Call(const HttpRequest& request, const Catalogues& catalogues, Metrics& metrics);

    const Catalogues& catalogues() const noexcept { return m_rCatalogues; }
    const HttpRequest& request() const noexcept { return m_rRequest; }
    const Target& target() const noexcept { return m_tTarget; }
    void count(Stage stage) const noexcept { m_rMetrics.count(stage); }

    /// Header and "language" parameter through the mapping: best entry first, each as a whole, until a rule other than
    /// that for everything applies.
    Resolution resolve() const;
    /// The locale that the parameter "locale" names (Refusal 404 when it is not allowed), else the resolved one.
    vel::Locale plainLocale() const;
    /// The same with the overrides of the cookie and of the "user" parameters.
    vel::Locale locale() const;
    /// The parameter "language", else the default language of the locale, else "en".
    vel::String language(const vel::Locale& locale) const;
    /// What the response is encoded in: the best of Accept-Charset and of the locale's list that the list "supported"
    /// has. A null handle, for UTF-8, when the data has no such list.
    vel::Handle<const vel::CharacterSet> characterSet(const vel::Locale& locale) const;
    /// The JSON text in the response's character set. Refusal 413 when it is longer than kAnswerBytes.
    HttpAnswer answer(const answers::Json& json, const vel::Locale& locale) const;

private:
    const HttpRequest& m_rRequest;
    const Catalogues& m_rCatalogues;
    Metrics& m_rMetrics;
    Target m_tTarget;
    Parameters m_tPreferences;
};

/// The refusal of what would need an answer of more than kAnswerBytes.
Refusal answerTooLarge();

/// The bytes when they are UTF-8, else with U+FFFD for each that is not ASCII.
std::string printable(std::string_view bytes);

}  // namespace server
