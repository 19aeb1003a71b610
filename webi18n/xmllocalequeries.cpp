#include <algorithm>
#include <cwchar>

#include "vel/core/assertion.h"
#include "webi18n/localenames.h"
#include "xmllocale.h"

// The read operations of XmlLocaleImpl.

namespace vel::i18n_details {

namespace {

constexpr unsigned kMonths = 12;
constexpr unsigned kDays = 7;

/// Appends the list's entry, or the English name for an index that only the fallback table reaches.
void appendName(const XmlLocaleImpl::NameList& list, const wchar_t* const* fallback, unsigned count, unsigned index,
                StringBufferBase& out)
{
    if (index >= count) {
        return;
    }
    out.append(index < list.size() ? list[index] : std::wstring_view(fallback[index]));
}

std::vector<String> stringsOf(const XmlLocaleImpl::NameList& list)
{
    std::vector<String> strings;
    strings.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        strings.emplace_back(list[i]);
    }
    return strings;
}

}  // namespace

const String* XmlLocaleImpl::overrideOf(Locale::StringInfo info) const noexcept
{
    switch (info) {
    case Locale::kDateShortFormat:
        return &m_sOverridingDateFormat;
    case Locale::kTimeFormat:
        return &m_sOverridingTimeFormat;
    case Locale::kDateInputFormat:
        return &m_sOverridingDateInputFormat;
    case Locale::kTimeInputFormat:
        return &m_sOverridingTimeInputFormat;
    case Locale::kTimeSeparator:
        return &m_sOverridingTimeSeparator;
    case Locale::kDateSeparator:
        return &m_sOverridingDateSeparator;
    case Locale::kThousandsSeparator:
    case Locale::kMonetaryThousandsSeparator:
        return &m_sOverridingThousandsSeparator;
    case Locale::kDecimalSeparator:
    case Locale::kMonetaryDecimalSeparator:
        return &m_sOverridingDecimalSeparator;
    default:
        return nullptr;
    }
}

std::wstring_view XmlLocaleImpl::info(Locale::StringInfo info) const noexcept
{
    const String* overriding = overrideOf(info);
    return overriding == nullptr || overriding->isEmpty() ? stored(info) : overriding->view();
}

std::vector<String> XmlLocaleImpl::storedNames(Locale::NameType type) const
{
    return type < Locale::kNameTypeEnd_ ? stringsOf(nameList(type)) : std::vector<String>();
}

Locale::DateOrder XmlLocaleImpl::getDateOrder() const noexcept
{
    return m_eOverridingDateOrder < Locale::kDateOrderEnd_ ? m_eOverridingDateOrder : m_eDateOrder;
}

bool XmlLocaleImpl::is24Hours() const noexcept
{
    return m_eOverriding24Hours == Locale::kNotDefined24HR ? m_b24Hours : m_eOverriding24Hours == Locale::kIs24HR;
}

/// The list that a month lookup of the type reads.
const XmlLocaleImpl::NameList& XmlLocaleImpl::monthNamesFor(Locale::NameType type) const
{
    if (type == Locale::kNominitiveMonth || type == Locale::kAbbreviatedMonth) {
        return nameList(type);
    }
    if (type != Locale::kGenetiveMonth) {
        // A format list has no single names. After the report the lookup goes on as for genitive months, deliberately:
        // with the type's own list where there are genitive names, else with the nominative ones.
        VEL_FAIL("false");
    }
    return nameList(nameList(Locale::kGenetiveMonth).isEmpty() ? Locale::kNominitiveMonth : type);
}

void XmlLocaleImpl::getName(Locale::NameType type, unsigned index, StringBufferBase& out) const
{
    if (type > Locale::kNameTypeEnd_) {
        return;
    }
    if (type == Locale::kNameTypeEnd_) {
        VEL_FAIL("Invalid locale property name.");
        return;
    }
    if (type == Locale::kDay || type == Locale::kAbbreviatedDay) {
        appendName(nameList(type), s_pDayNames, kDays, index, out);
        return;
    }
    appendName(monthNamesFor(type), s_pMonthNames, kMonths, index, out);
}

void XmlLocaleImpl::getAllNames(Locale::NameType type, std::vector<String>& out) const
{
    if (type != Locale::kDateFormats && type != Locale::kTimeFormats && type != Locale::kDateTimeFormats) {
        VEL_FAIL("Invalid locale property name");
        return;
    }
    if (type != Locale::kDateTimeFormats || !nameList(type).isEmpty()) {
        out = stringsOf(nameList(type));
        return;
    }
    // The derived list follows what `out` held: callers pass an empty vector.
    const NameList& dates = nameList(Locale::kDateFormats);
    const NameList& times = nameList(Locale::kTimeFormats);
    out.reserve(out.size() + dates.size() * times.size());
    for (std::size_t date = 0; date < dates.size(); ++date) {
        for (std::size_t time = 0; time < times.size(); ++time) {
            out.push_back(String(dates[date]) + L" " + times[time]);
        }
    }
}

void XmlLocaleImpl::getEra(const DateTime& /*date*/, StringBufferBase& /*out*/) const
{}

void XmlLocaleImpl::mapString(Locale::Mapping /*mapping*/, const wchar_t* text, std::size_t length,
                              StringBufferBase& out) const
{
    out.append(std::wstring_view(text, length));
}

int XmlLocaleImpl::collateStrings(Locale::CollateOptions /*options*/, const String& a, const String& b) const
{
    return std::wcscmp(a.c_str(), b.c_str());
}

}  // namespace vel::i18n_details
