#include "webi18n/localetaglookup.h"

#include <array>
#include <new>
#include <utility>

#include "csv.h"
#include "i18nmessages.h"
#include "localetables.h"
#include "localetaglookupstate.h"
#include "properties.h"
#include "vel/core/staticinit.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlpath.h"

namespace vel {

namespace {

VEL_INIT_TABLES const StaticValue<XmlPath> kpfLocaleDefinition([] { return XmlPath(L"localeDefinition"); });
VEL_INIT_TABLES const StaticValue<XmlPath> kpfSupportedDef([] {
    return XmlPath(L"localeList[@name=\"supported\"]/localeDefinition");
});

VEL_INIT_TABLES const StaticValue<Message> kmsgInvalidLocaleTag([] {
    return Message::external(L"kmsgInvalidLocaleTag");
});
VEL_INIT_TABLES const StaticValue<Message> kmsgNotSupportedLocaleTag([] {
    return Message::external(L"kmsgNotSupportedLocaleTag");
});

const wchar_t* const strMonth = L"[MMMM]";
const wchar_t* const strMonthAbbr = L"[MMM]";
const wchar_t* const strDay = L"[DDDD]";
const wchar_t* const strDayAbbr = L"[DDD]";
const std::array<const wchar_t*, 4> arrAllowedNumericCustomFmts = {strMonth, strMonthAbbr, strDay, strDayAbbr};

constexpr const wchar_t* ksAllowedLocalesFile = L"Localization/AllowedLocalesFile";
constexpr const wchar_t* ksAllowedLocales = L"Localization/AllowedLocales";

/// A host begins with the catalogue: here it learns that memory was lacking when the library was loaded.
void requireStaticData()
{
    if (!Locale::kUSA.isValid()) {
        throw std::bad_alloc();
    }
    i18n_details::requireMessageFile();
    i18n_details::requireTables();
}

}  // namespace

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
    requireStaticData();
    m_tConfig.initialize(*this);
}

LocaleTagLookup::~LocaleTagLookup() = default;

Handle<const LocaleTagLookup>& LocaleTagLookup::getInstanceHandle()
{
    static Handle<const LocaleTagLookup> instance = makeHandle<LocaleTagLookup>();
    return instance;
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
    m_pState->m_tFormats.clear();
    const XmlDocument document = XmlDocument::load(fileName);
    for (const NonOwningPtr<const XmlElement>& definition : document.root().select(kpfLocaleDefinition)) {
        Locale locale = m_pState->baseFor(definition->attribute(L"basedOn"));
        locale.applyXmlDefinition(*definition);
        // A definition without a name keeps its base's and so replaces the base, deliberately.
        m_pState->m_tAllLocales.set(locale.definitionName().view(), locale);
        m_pState->addDataFormats(*definition);
    }
    for (const wchar_t* format : arrAllowedNumericCustomFmts) {
        m_pState->m_tFormats.add(format);
    }
    loadConfig(config, kConfigInitialize);
}

void LocaleTagLookupState::addDataFormats(const XmlElement& definition)
{
    using namespace i18n_details;
    forEachProperty(definition, [this](const XmlElement& property) {
        forEachProperty(property, [this](const XmlElement& entry) {
            const std::wstring_view text = entry.innerTextView();
            if (!text.empty() && entry.attribute(ksName).empty()) {
                m_tFormats.add(text);
            }
        });
    });
}

void LocaleTagLookup::loadLocaleLists(const String& fileName)
{
    const XmlDocument document = XmlDocument::load(fileName);
    for (const NonOwningPtr<const XmlElement>& entry : document.root().select(kpfSupportedDef)) {
        m_pState->allow(entry->attribute(i18n_details::ksName));
    }
}

bool LocaleTagLookup::loadConfig(const ConfigReader& config, EConfig /*mode*/)
{
    i18n_details::NamedLocales& supported = m_pState->m_tSupportedLocales;
    i18n_details::NamedLocales tOrig;
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
    const Locale* const found = findSupported(name);
    if (found == nullptr) {
        return false;
    }
    rLocale = *found;
    return true;
}

const Locale* LocaleTagLookup::findSupported(const String& name) const noexcept
{
    return m_pState->m_tSupportedLocales.find(name.view());
}

void LocaleTagLookup::getSupportedLocales(std::vector<Locale>& out) const
{
    const LocaleMap& supported = m_pState->m_tSupportedLocales.inOrder();
    out.clear();
    out.reserve(supported.size());
    for (const auto& [name, locale] : supported) {
        out.push_back(locale);
    }
}

bool LocaleTagLookup::isValidDataFormat(const String& sDataFormat) const
{
    return m_pState->m_tFormats.find(sDataFormat.view()) != TextNumbers::kNone;
}

}  // namespace vel
