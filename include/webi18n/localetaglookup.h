#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "vel/config/config.h"
#include "vel/core/api.h"
#include "vel/core/exception.h"
#include "vel/core/handle.h"
#include "vel/core/nocasecompare.h"
#include "vel/core/string.h"
#include "webi18n/locale.h"

namespace vel {

/// Locales by definition name, without regard to case. A key keeps the spelling of its first insertion.
using LocaleMap = std::map<String, Locale, NoCaseCompareLess>;

class LocaleTagLookupState;

namespace i18n_details {
class LocaleMappingImpl;
}  // namespace i18n_details

/// The catalogue of locale definitions: every definition that was loaded, the allowed ones among them as configuration
/// chooses, and the standard data formats.
///
/// A definitions file has "localeDefinition" elements below its root, each with a "name", perhaps a "basedOn" that
/// names a definition loaded before, and its properties:
///
///     <localeDefinitions>
///       <localeDefinition name="de-de"><property name="decimalSeparator">,</property></localeDefinition>
///       <localeDefinition name="de-ch" basedOn="de-de"><property
///       name="decimalSeparator">.</property></localeDefinition>
///     </localeDefinitions>
///
/// Threads: the singleton's creation is safe from any thread. Loading runs on one thread before others read; after that
/// every const operation is safe from any thread.
class WEBI18N_API LocaleTagLookup : public RefCounted
{
public:
    /// For hosts: a tag that names no locale. Message "kmsgInvalidLocaleTag", insert 1 the tag. Never thrown here.
    class WEBI18N_API InvalidLocaleTag : public Exception
    {
    public:
        explicit InvalidLocaleTag(const String& tag);
        ~InvalidLocaleTag() override;
    };

    /// For hosts: a tag whose locale is not allowed. Message "kmsgNotSupportedLocaleTag", insert 1 the tag. Never
    /// thrown here.
    class WEBI18N_API NotSupportedLocaleTag : public Exception
    {
    public:
        explicit NotSupportedLocaleTag(const String& tag);
        ~NotSupportedLocaleTag() override;
    };

    /// A catalogue of its own. When the process has a global configuration reader, loadConfig runs with it once, while
    /// no definition is known yet; its exceptions pass.
    LocaleTagLookup();
    ~LocaleTagLookup() override;

    /// The process's catalogue, created by the first call. When its constructor throws, the next call tries again.
    static Handle<const LocaleTagLookup>& getInstanceHandle();
    /// The object behind that handle; InvalidHandleException when a host has emptied it.
    static const LocaleTagLookup& getInstance();
    /// The same for start-up: loading needs a catalogue that can change.
    static LocaleTagLookup& getInstanceForLoading();

    /// Reads a definitions file on top of what was loaded before, then rebuilds the allowed locales from `config`. A
    /// definition of a name that is known replaces it; definitions built on the old one stay as they were.
    /// Throws XmlException for a file that cannot be read; then the standard data formats are empty, and definitions
    /// and allowed locales are as before. What fails later (memory) leaves the definitions stored so far.
    void loadLocaleDefinitions(const ConfigReader& config, const String& fileName);

    /// Adds the locales that the list "supported" of a locale lists file names to the allowed ones; unknown names are
    /// skipped. Throws XmlException. Part of loadConfig.
    ///
    ///     <localeLists><localeList name="supported"><localeDefinition name="de-ch"/></localeList></localeLists>
    void loadLocaleLists(const String& fileName);

    /// Rebuilds the allowed locales: from the lists file that "Localization/AllowedLocalesFile" names, or when that is
    /// empty from the comma-separated names in "Localization/AllowedLocales". Unknown names are skipped. Returns true.
    /// When it throws, the allowed locales are as before.
    bool loadConfig(const ConfigReader& config, EConfig mode);

    /// Finds an allowed locale by name, without regard to case. True and `rLocale` assigned, or false and `rLocale` as
    /// it was. A definition that is not allowed is not found.
    bool findLocaleByDefinitionName(const String& name, Locale& rLocale) const;
    /// Replaces `out` by the allowed locales, ascending by name without regard to case.
    void getSupportedLocales(std::vector<Locale>& out) const;
    /// Whether the text is a standard data format: a nameless list entry of any definition, or one of "[MMMM]",
    /// "[MMM]",
    /// "[DDDD]", "[DDD]". Exact.
    bool isValidDataFormat(const String& sDataFormat) const;

private:
    friend class i18n_details::LocaleMappingImpl;
    friend class Currency;

    /// The allowed locale of that name, or null. Valid until the catalogue changes.
    const Locale* findSupported(const String& name) const noexcept;

    Config<LocaleTagLookup> m_tConfig;
    std::unique_ptr<LocaleTagLookupState> m_pState;
};

}  // namespace vel
