#include "webi18n/localetaglookup.h"

#include <array>
#include <utility>

#include "csv.h"
#include "vel/core/staticinit.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlpath.h"

namespace vel {

namespace {

VEL_INIT_TABLES const XmlPath kpfLocaleDefinition(L"localeDefinition");
VEL_INIT_TABLES const XmlPath kpfSupportedDef(L"localeList[@name=\"supported\"]/localeDefinition");
VEL_INIT_TABLES const XmlPath kpfStandardDataFormats(L"property/property");

VEL_INIT_TABLES const Message kmsgInvalidLocaleTag = Message::external(L"kmsgInvalidLocaleTag");
VEL_INIT_TABLES const Message kmsgNotSupportedLocaleTag = Message::external(L"kmsgNotSupportedLocaleTag");

const wchar_t* const strMonth = L"[MMMM]";
const wchar_t* const strMonthAbbr = L"[MMM]";
const wchar_t* const strDay = L"[DDDD]";
const wchar_t* const strDayAbbr = L"[DDD]";
const std::array<const wchar_t*, 4> arrAllowedNumericCustomFmts = {strMonth, strMonthAbbr, strDay, strDayAbbr};

constexpr const wchar_t* ksAllowedLocalesFile = L"Localization/AllowedLocalesFile";
constexpr const wchar_t* ksAllowedLocales = L"Localization/AllowedLocales";

}  // namespace

/// Every definition that was loaded, and the allowed ones by the names under which configuration named them.
class LocaleTagLookupState
{
public:
    LocaleMap m_tAllLocales;
    LocaleMap m_tSupportedLocales;

    /// Allows the locale of that name; an unknown or empty name is skipped.
    void allow(std::wstring_view name)
    {
        if (name.empty()) {
            return;
        }
        if (const auto found = m_tAllLocales.find(name); found != m_tAllLocales.end()) {
            m_tSupportedLocales.insert_or_assign(String(name), found->second);
        }
    }

    /// A copy of the base's locale; an empty one where the name is empty or not loaded before.
    Locale baseFor(std::wstring_view basedOn) const
    {
        const auto found = basedOn.empty() ? m_tAllLocales.end() : m_tAllLocales.find(basedOn);
        return found == m_tAllLocales.end() ? Locale() : found->second;
    }
};

LocaleTagLookup::InvalidLocaleTag::InvalidLocaleTag(const String& tag)
    : Exception(Message(kmsgInvalidLocaleTag).insert(1, tag))
{}

LocaleTagLookup::InvalidLocaleTag::~InvalidLocaleTag() = default;

LocaleTagLookup::NotSupportedLocaleTag::NotSupportedLocaleTag(const String& tag)
    : Exception(Message(kmsgNotSupportedLocaleTag).insert(1, tag))
{}

LocaleTagLookup::NotSupportedLocaleTag::~NotSupportedLocaleTag() = default;

LocaleTagLookup::LocaleTagLookup()
    : m_tConfig(kConfigDontSupportReload), m_pState(std::make_unique<LocaleTagLookupState>())
{
    m_tConfig.initialize(*this);
}

LocaleTagLookup::~LocaleTagLookup() = default;

Handle<const LocaleTagLookup>& LocaleTagLookup::getInstanceHandle()
{
    static Handle<const LocaleTagLookup> s_hInstance = makeHandle<LocaleTagLookup>();
    return s_hInstance;
}

const LocaleTagLookup& LocaleTagLookup::getInstance()
{
    return *getInstanceHandle();
}

LocaleTagLookup& LocaleTagLookup::getInstanceForLoading()
{
    // Catalogues are never built as constants; the handle's type only keeps readers from changing them.
    return const_cast<LocaleTagLookup&>(getInstance());
}

void LocaleTagLookup::loadLocaleDefinitions(const ConfigReader& config, const String& fileName)
{
    m_tFormats.clear();
    const XmlDocument document = XmlDocument::load(fileName);
    for (const NonOwningPtr<const XmlElement>& definition : document.root().select(kpfLocaleDefinition)) {
        Locale locale = m_pState->baseFor(definition->attribute(L"basedOn"));
        locale.applyXmlDefinition(*definition);
        // A definition without a name keeps its base's and so replaces the base, deliberately.
        m_pState->m_tAllLocales.insert_or_assign(locale.definitionName(), locale);
        addDataFormats(*definition);
    }
    for (const wchar_t* format : arrAllowedNumericCustomFmts) {
        m_tFormats.emplace(format);
    }
    loadConfig(config, kConfigInitialize);
}

/// Takes every nameless list entry, month and day names included, deliberately.
void LocaleTagLookup::addDataFormats(const XmlElement& definition)
{
    for (const NonOwningPtr<const XmlElement>& entry : definition.select(kpfStandardDataFormats)) {
        if (!entry->attribute(L"name").empty()) {
            continue;
        }
        if (String text = entry->innerText(); !text.isEmpty()) {
            m_tFormats.insert(std::move(text));
        }
    }
}

void LocaleTagLookup::loadLocaleLists(const String& fileName)
{
    const XmlDocument document = XmlDocument::load(fileName);
    for (const NonOwningPtr<const XmlElement>& entry : document.root().select(kpfSupportedDef)) {
        m_pState->allow(entry->attribute(L"name"));
    }
}

bool LocaleTagLookup::loadConfig(const ConfigReader& config, EConfig /*mode*/)
{
    LocaleMap& supported = m_pState->m_tSupportedLocales;
    LocaleMap tOrig;
    tOrig.swap(supported);
    try {
        const FilePath file = config.getFilePath(ksAllowedLocalesFile);
        if (!file.isEmpty()) {
            loadLocaleLists(file.toString());
        } else {
            const String names = config.getString(ksAllowedLocales, String());
            i18n_details::forEachPiece(names.view(), [this](std::wstring_view name) { m_pState->allow(name); });
        }
    } catch (...) {
        supported.swap(tOrig);
        throw;
    }
    return true;
}

bool LocaleTagLookup::findLocaleByDefinitionName(const String& name, Locale& rLocale) const
{
    const LocaleMap& supported = m_pState->m_tSupportedLocales;
    const auto found = supported.find(name);
    if (found == supported.end()) {
        return false;
    }
    rLocale = found->second;
    return true;
}

void LocaleTagLookup::getSupportedLocales(std::vector<Locale>& out) const
{
    out.clear();
    out.reserve(m_pState->m_tSupportedLocales.size());
    for (const auto& [name, locale] : m_pState->m_tSupportedLocales) {
        out.push_back(locale);
    }
}

bool LocaleTagLookup::isValidDataFormat(const String& sDataFormat) const
{
    return m_tFormats.contains(sDataFormat);
}

}  // namespace vel
