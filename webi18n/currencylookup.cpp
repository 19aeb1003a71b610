#include "webi18n/currencylookup.h"

#include <cwchar>
#include <memory>
#include <optional>
#include <utility>

#include "captionmemory.h"
#include "vel/core/message.h"
#include "vel/core/staticinit.h"
#include "vel/core/texthash.h"
#include "vel/log/logger.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlpath.h"

namespace vel {

namespace {

VEL_INIT_TABLES const StaticValue<XmlPath> kpfCurrency([] { return XmlPath(L"Currencies/Currency"); });
VEL_INIT_TABLES const StaticValue<XmlPath> kpfNegative([] { return XmlPath(L"negative"); });

constexpr const wchar_t* kPropertyFile = L"currenciesFile";
constexpr const wchar_t* ksDisplay = L"display";
constexpr const wchar_t* ksLocal = L"local";
constexpr const wchar_t* ksInternational = L"international";
constexpr const wchar_t* ksLocalCurrencyFormat = L"$#";
constexpr const wchar_t* ksInternationalCurrencyFormat = L"# $";
constexpr const wchar_t* ksMinus = L"minus";
constexpr const wchar_t* ksMinusSymbol = L"-";
constexpr const wchar_t* ksParens = L"parens";
constexpr const wchar_t* ksParensOpenSymbol = L"(";
constexpr const wchar_t* ksParensCloseSymbol = L")";

[[maybe_unused]] constexpr LogSource klsCurrencyLookup(L"vel.i18n.currencyLookup");
constexpr LogSource klsCurrencyLookupLoad(L"vel.i18n.currencyLookup.loadCurrencies");

String attributeOf(const XmlElement& element, const wchar_t* name)
{
    return String(element.attribute(name));
}

/// "true", "false", "1" and "0"; anything else, and nothing, is the default.
bool booleanAttribute(const XmlElement& element, const wchar_t* name, bool defaultValue)
{
    const std::wstring_view text = element.attribute(name);
    if (text == L"true" || text == L"1") {
        return true;
    }
    return text == L"false" || text == L"0" ? false : defaultValue;
}

/// The number at the front of the text; 0 when there is none, or none that the record can hold.
std::int32_t digitsOf(const String& text)
{
    const long number = std::wcstol(text.c_str(), nullptr, 10);
    return std::in_range<std::int32_t>(number) ? static_cast<std::int32_t>(number) : 0;
}

std::optional<Currency::Type> typeOf(const String& text)
{
    if (text.equalsNoCase(ksLocal)) {
        return Currency::kLocal;
    }
    return text.equalsNoCase(ksInternational) ? std::optional(Currency::kInternational) : std::nullopt;
}

}  // namespace

/// Builds one record from its element.
class CurrencyReader
{
public:
    /// The record, or null for an element that is to be skipped.
    static Handle<const Currency> read(const XmlElement& element);

private:
    explicit CurrencyReader(const XmlElement& element) : m_tElement(element), m_hCurrency(makeHandle<Currency>()) {}

    void readTexts();
    void readNegativeFormats();
    void readCaptions();

    const XmlElement& m_tElement;
    Handle<Currency> m_hCurrency;
};

Handle<const Currency> CurrencyReader::read(const XmlElement& element)
{
    const String tag = attributeOf(element, L"tag");
    const String type = attributeOf(element, L"type");
    if (tag.isEmpty() || type.isEmpty()) {
        VEL_LOG(kLogWarning, Message::text(L"Skipping element with blank tag or type: %1")
                                 .insert(1, element.toXmlText(Logger::kLongestInsert + 1)));
        return {};
    }
    const std::optional<Currency::Type> known = typeOf(type);
    if (!known) {
        return {};
    }
    CurrencyReader reader(element);
    reader.m_hCurrency->m_sTag = tag;
    reader.m_hCurrency->m_eType = *known;
    if (*known == Currency::kLocal) {
        reader.m_hCurrency->m_hCaptions = makeHandle<i18n_details::CaptionMemory>();
    }
    reader.readTexts();
    reader.readNegativeFormats();
    reader.readCaptions();
    return reader.m_hCurrency;
}

void CurrencyReader::readTexts()
{
    Currency& currency = *m_hCurrency;
    currency.setSymbol(attributeOf(m_tElement, L"symbol"));
    currency.m_sLocaleDefinitionName = attributeOf(m_tElement, L"locale");
    currency.m_sFormat = attributeOf(m_tElement, L"format");
    if (currency.m_sFormat.isEmpty()) {
        currency.m_sFormat =
            currency.m_eType == Currency::kLocal ? ksLocalCurrencyFormat : ksInternationalCurrencyFormat;
    }
    const String digits = attributeOf(m_tElement, L"digits");
    currency.m_nDigits = digits.isEmpty() ? -1 : digitsOf(digits);
    currency.m_bDisplay = booleanAttribute(m_tElement, ksDisplay, true);
    currency.m_bPlaceholder = booleanAttribute(m_tElement, L"placeholder", false);
    currency.m_bThousandsSeparator = booleanAttribute(m_tElement, L"thousandsSeparator", true);
}

void CurrencyReader::readNegativeFormats()
{
    Currency& currency = *m_hCurrency;
    Currency::NegativeFormats& formats = currency.m_vNegativeFormats;
    const auto addMissing = [&](const wchar_t* tag, const String& format) { formats.try_emplace(tag, format, tag); };
    currency.m_sPreferredNegativeTag = ksMinus;
    for (const NonOwningPtr<const XmlElement>& negative : m_tElement.select(kpfNegative)) {
        const String tag = attributeOf(*negative, L"tag");
        const String format = attributeOf(*negative, L"format");
        if (tag.isEmpty() || format.isEmpty()) {
            continue;
        }
        if (formats.empty()) {
            currency.m_sPreferredNegativeTag = tag;
        }
        formats.insert_or_assign(tag, Currency::NegativeFormat(format, tag));
    }
    addMissing(ksParens, String(ksParensOpenSymbol) + currency.m_sFormat + ksParensCloseSymbol);
    addMissing(ksMinus, String(ksMinusSymbol) + currency.m_sFormat);
}

void CurrencyReader::readCaptions()
{
    // Files exist with either spelling of the caption's attribute.
    std::wstring_view message = m_tElement.attribute(L"displayMessage");
    if (message.empty()) {
        message = m_tElement.attribute(L"displaymessage");
    }
    if (!message.empty()) {
        m_hCurrency->m_tDisplayMessage = GDVariant::message(Message::external(String(message)));
    }
    if (const std::wstring_view name = m_tElement.attribute(L"displayName"); !name.empty()) {
        m_hCurrency->m_tDisplayName = GDVariant::message(Message::external(String(name)));
    }
}

namespace {

/// Whether a record has a text, such as its tag.
template <const String& (Currency::*keyOf)() const noexcept>
auto has(std::wstring_view key) noexcept
{
    return [key](const Currency* currency) { return (currency->*keyOf)().view() == key; };
}

template <const String& (Currency::*keyOf)() const noexcept>
Handle<const Currency> findIn(const FlatIndex<const Currency*>& index, const String& key) noexcept
{
    const Currency* const* const found = index.find(hashText(key.view()), has<keyOf>(key.view()));
    return Handle<const Currency>(found == nullptr ? nullptr : *found);
}

/// Adds the record, or replaces that of an equal key.
template <const String& (Currency::*keyOf)() const noexcept>
void setIn(FlatIndex<const Currency*>& index, const Currency& currency)
{
    const std::wstring_view key = (currency.*keyOf)().view();
    const std::uint32_t hash = hashText(key);
    if (const Currency** const known = index.find(hash, has<keyOf>(key)); known != nullptr) {
        *known = &currency;
    } else {
        index.add(hash, &currency);
    }
}

VEL_INIT_VALUES CurrencyLookup g_tInstance;

}  // namespace

CurrencyLookup& CurrencyLookup::getInstance()
{
    return g_tInstance;
}

CurrencyLookup::CurrencyLookup() = default;
CurrencyLookup::CurrencyLookup(const CurrencyLookup&) = default;
CurrencyLookup::~CurrencyLookup() = default;

CurrencyLookup::CurrencyLookup(const String& path)
{
    loadCurrencies(path);
}

void CurrencyLookup::loadCurrencies(const String& path)
{
    const ScopedLogSource source(klsCurrencyLookupLoad);
    const ScopedLogProperty file(kPropertyFile, path.view());
    VEL_LOG(kLogInformation, Message::text(L"Loading currencies file '%1'.").insert(1, path));
    const XmlDocument document = XmlDocument::load(path);
    CurrencyLookup changed(*this);
    for (const NonOwningPtr<const XmlElement>& element : document.select(kpfCurrency)) {
        if (const Handle<const Currency> currency = CurrencyReader::read(*element); !currency.isNull()) {
            changed.add(currency);
        }
    }
    swap(changed);
}

/// Of several with one tag or symbol the last is found; the list keeps them all.
void CurrencyLookup::add(const Handle<const Currency>& currency)
{
    m_tCurrencyMap.insert_or_assign(currency->getTag(), currency);
    m_tCurrencyList.push_back(currency);
    setIn<&Currency::getCurrencySymbol>(m_tSymbolToCurrencyMap, *currency);
    setIn<&Currency::getTag>(m_tTagIndex, *currency);
}

void CurrencyLookup::swap(CurrencyLookup& other) noexcept
{
    m_tCurrencyMap.swap(other.m_tCurrencyMap);
    m_tCurrencyList.swap(other.m_tCurrencyList);
    m_tSymbolToCurrencyMap.swap(other.m_tSymbolToCurrencyMap);
    m_tTagIndex.swap(other.m_tTagIndex);
}

Handle<const Currency> CurrencyLookup::lookupCurrencyTag(const String& tag) const
{
    return findIn<&Currency::getTag>(m_tTagIndex, tag);
}

Handle<const Currency> CurrencyLookup::lookupCurrencySymbol(const String& symbol) const
{
    return findIn<&Currency::getCurrencySymbol>(m_tSymbolToCurrencyMap, symbol);
}

}  // namespace vel
