#pragma once

#include <map>
#include <vector>

#include "vel/config/config.h"
#include "vel/core/api.h"
#include "vel/core/nocasecompare.h"
#include "vel/core/string.h"

namespace vel {

/// Named lists of interface languages. One exists today, "supported", filled from "Localization/AllowedLanguages".
/// List names compare without regard to case. Threads: loadConfig runs while nobody reads; the getters are safe from
/// any thread.
class WEBI18N_API LanguageLists
{
public:
    /// No lists.
    LanguageLists();
    ~LanguageLists();

    /// Replaces the list "supported" by the comma-separated codes of "Localization/AllowedLanguages", trimmed, in their
    /// order. Empty codes are kept, deliberately, and nothing is validated. Returns true. When the reader throws, the
    /// list is as before.
    ///
    ///     "en, fr ,de" -> en, fr, de     "en,,fr," -> en, (empty), fr, (empty)     "" -> an empty list
    bool loadConfig(const ConfigReader& reader, EConfig eConfig);

    /// `out` becomes the list of that name; without one it stays as it is.
    void getLanguageList(std::vector<String>& out, const String& name) const;
    /// getLanguageList of "supported".
    void getSupportedLanguageList(std::vector<String>& out) const;

private:
    std::map<String, std::vector<String>, NoCaseCompareLess> m_LanguageLists;
};

}  // namespace vel
