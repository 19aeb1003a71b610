#include "xmllocale.h"

#include <cwchar>

#include "localetables.h"
#include "properties.h"
#include "vel/core/message.h"
#include "vel/log/logger.h"
#include "vel/xml/xmlelement.h"

namespace vel::i18n_details {

namespace {

using namespace std::string_view_literals;

constexpr LogSource klsApplyDefinition(L"vel.i18n.xmllocale.applyDefinition");
constexpr long long kLastDayOfWeek = 6;

/// Calls `take(entry, text)` for every child "property" with a text, in document order.
template <typename Take>
void forEachEntry(const XmlElement& list, Take take)
{
    forEachProperty(list, [&](const XmlElement& entry) {
        if (const std::wstring_view text = entry.innerTextView(); !text.empty()) {
            take(entry, text);
        }
    });
}

std::uint32_t readUnsigned(const String& text)
{
    return static_cast<std::uint32_t>(std::wcstoul(text.c_str(), nullptr, 10));
}

}  // namespace

XmlLocaleImpl::XmlLocaleImpl() : m_aStrings(freshStrings())
{}

XmlLocaleImpl::XmlLocaleImpl(const XmlLocaleImpl&) = default;

const CopyOnWrite<XmlLocaleImpl::Strings>& XmlLocaleImpl::freshStrings()
{
    static const CopyOnWrite<Strings> kFresh = [] {
        Strings strings;
        strings[Locale::kAM] = Text(L"am");
        strings[Locale::kPM] = Text(L"pm");
        return CopyOnWrite<Strings>(strings);
    }();
    return kFresh;
}

void XmlLocaleImpl::store(Locale::StringInfo info, std::wstring_view text)
{
    // What stays equal stays shared.
    if (stored(info) != text) {
        m_aStrings.edit()[info] = text.empty() ? Text() : Text(text);
    }
}

void XmlLocaleImpl::applyXmlDefinition(const XmlElement& definition)
{
    const ScopedLogSource source(klsApplyDefinition);
    if (const std::wstring_view name = definition.attribute(ksName); !name.empty()) {
        m_sDefinitionName = CopyOnWrite<String>(String(name));
    }
    detachMonetary(Locale::kMonetaryThousandsSeparator, Locale::kThousandsSeparator);
    detachMonetary(Locale::kMonetaryDecimalSeparator, Locale::kDecimalSeparator);
    forEachProperty(definition, [this](const XmlElement& property) { applyProperty(property); });
    // Whatever a definition says of its input formats, they are always derived, the time format from the definition's
    // own clock, the date format with a user's order if the object carries one.
    store(Locale::kTimeInputFormat, buildTimeInputFormat(stored(Locale::kTimeSeparator), m_b24Hours));
    store(Locale::kDateInputFormat, buildDateInputFormat(stored(Locale::kDateSeparator), getDateOrder()));
    attachMonetary(Locale::kMonetaryThousandsSeparator, Locale::kThousandsSeparator);
    attachMonetary(Locale::kMonetaryDecimalSeparator, Locale::kDecimalSeparator);
}

/// A monetary separator that only followed the plain one of the base follows the plain one of the derived definition.
void XmlLocaleImpl::detachMonetary(Locale::StringInfo monetary, Locale::StringInfo plain)
{
    if (stored(monetary) == stored(plain)) {
        store(monetary, {});
    }
}

void XmlLocaleImpl::attachMonetary(Locale::StringInfo monetary, Locale::StringInfo plain)
{
    if (stored(monetary).empty() && !stored(plain).empty()) {
        const Text shared = (*m_aStrings)[plain];
        m_aStrings.edit()[monetary] = shared;
    }
}

void XmlLocaleImpl::applyProperty(const XmlElement& property)
{
    const std::wstring_view name = property.attribute(ksName);
    if (const Locale::StringInfo info = s_StringInfoMap->find(name); info != Locale::kStringInfoEnd_) {
        store(info, property.innerTextView());
        return;
    }
    if (!applyScalar(name, property) && !applyList(name, property)) {
        VEL_LOG(kLogWarning,
                Message::text(L"Unknown property: %1").insert(1, property.toXmlText(Logger::kLongestInsert + 1)));
    }
}

bool XmlLocaleImpl::applyScalar(std::wstring_view name, const XmlElement& property)
{
    if (name == L"currencyDigits"sv) {
        m_nCurrencyDigits = readUnsigned(property.innerText());
    } else if (name == L"24hours"sv) {
        m_b24Hours = property.innerText() == L"true";
    } else if (name == L"dateOrder"sv) {
        applyDateOrder(property.innerText());
    } else if (name == L"firstDayOfWeek"sv) {
        applyFirstDayOfWeek(property.innerText());
    } else {
        return false;
    }
    return true;
}

bool XmlLocaleImpl::applyList(std::wstring_view name, const XmlElement& property)
{
    if (const Locale::NameType type = s_NameTypeMap->find(name); type != Locale::kNameTypeEnd_) {
        SharedTextsBuilder list;
        forEachEntry(property, [&](const XmlElement&, std::wstring_view text) { list.add(text); });
        m_aNameLists.edit()[type] = list.build();
        return true;
    }
    if (name == L"scaleFactors"sv) {
        applyScaleFactors(property);
        return true;
    }
    return false;
}

void XmlLocaleImpl::applyDateOrder(const String& text)
{
    m_eDateOrder = getDateOrderByString(text);
    if (m_eDateOrder == Locale::kDateOrderEnd_) {
        VEL_LOG(kLogWarning, Message::text(L"Invalid date order string '%1'.").insert(1, text));
        m_eDateOrder = Locale::kMDY;
    }
}

void XmlLocaleImpl::applyFirstDayOfWeek(const String& text)
{
    // Read at full width: what is cut first may look like a day. A negative number counts as a very large one.
    long long day = std::wcstoll(text.c_str(), nullptr, 10);
    if (day < 0 || day > kLastDayOfWeek) {
        VEL_LOG(kLogWarning, Message::text(L"Invalid first day of week: %1").insert(1, text));
        day = kLastDayOfWeek;
    }
    m_nFDOW = static_cast<std::uint32_t>(day);
}

void XmlLocaleImpl::applyScaleFactors(const XmlElement& property)
{
    ScaleFactors factors;
    forEachEntry(property, [&](const XmlElement& entry, std::wstring_view text) {
        factors.emplace_back(String(entry.attribute(ksName)), String(text));
    });
    factors.shrink_to_fit();
    m_tScaleFactors = CopyOnWrite<ScaleFactors>(std::move(factors));
}

String XmlLocaleImpl::buildDateInputFormat(std::wstring_view separator, Locale::DateOrder order) const
{
    static constexpr const wchar_t* kFields[Locale::kDateOrderEnd_][3] = {
        {L"MM", L"dd", L"yyyy"}, {L"dd", L"MM", L"yyyy"}, {L"yyyy", L"MM", L"dd"}};
    VEL_ASSERT_TEXT(order != Locale::kDateOrderEnd_, "Invalid date order");
    if (order >= Locale::kDateOrderEnd_) {
        return {};
    }
    StringBuffer<511> format;
    format.append(kFields[order][0]);
    format.append(separator);
    format.append(kFields[order][1]);
    format.append(separator);
    format.append(kFields[order][2]);
    return format.toString();
}

String XmlLocaleImpl::buildTimeInputFormat(std::wstring_view separator, bool is24Hours) const
{
    StringBuffer<511> format;
    format.append(is24Hours ? L"HH" : L"hh");
    format.append(separator);
    format.append(L"mm");
    format.append(separator);
    format.append(L"ss");
    format.append(is24Hours ? L"" : L" tt");
    return format.toString();
}

void XmlLocaleImpl::setOverridingDateInputFormat(const String& dateSeparator, Locale::DateOrder order)
{
    String separator = dateSeparator;
    String format;
    if (!separator.isEmpty() || order != Locale::kDateOrderEnd_) {
        // The order that is being replaced must not show through: without one of its own, the definition's counts.
        const Locale::DateOrder builtOrder = order == Locale::kDateOrderEnd_ ? m_eDateOrder : order;
        format =
            buildDateInputFormat(separator.isEmpty() ? stored(Locale::kDateSeparator) : separator.view(), builtOrder);
    }
    m_sOverridingDateSeparator.swap(separator);
    m_eOverridingDateOrder = order;
    m_sOverridingDateInputFormat.swap(format);
}

void XmlLocaleImpl::setOverridingTimeInputFormat(const String& timeSeparator, Locale::ClockIs24Hours clock)
{
    String separator = timeSeparator;
    String format;
    if (!separator.isEmpty() || clock != Locale::kNotDefined24HR) {
        const bool is24Hours = clock == Locale::kNotDefined24HR ? m_b24Hours : clock == Locale::kIs24HR;
        format =
            buildTimeInputFormat(separator.isEmpty() ? stored(Locale::kTimeSeparator) : separator.view(), is24Hours);
    }
    m_sOverridingTimeSeparator.swap(separator);
    m_eOverriding24Hours = clock;
    m_sOverridingTimeInputFormat.swap(format);
}

const String& XmlLocaleImpl::getDateOrderString(Locale::DateOrder order)
{
    return s_DateOrderMap->find(order);
}

Locale::DateOrder XmlLocaleImpl::getDateOrderByString(const String& text)
{
    return s_DateOrderMap->find(text.view());
}

Locale::DateOrder XmlLocaleImpl::guessDateOrderByString(const String& text)
{
    if (text.length() == 3) {
        return getDateOrderByString(text);
    }
    if (text == L"dm") {
        return Locale::kDMY;
    }
    if (text == L"md") {
        return Locale::kMDY;
    }
    return text == L"ym" ? Locale::kYMD : Locale::kDateOrderEnd_;
}

}  // namespace vel::i18n_details
