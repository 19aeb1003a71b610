#include "webi18n/locale.h"

#include <new>

#include "builtinlocale.h"
#include "localetables.h"
#include "vel/core/staticinit.h"
#include "vel/xml/xmldocument.h"
#include "xmllocale.h"

namespace vel {

using i18n_details::XmlLocaleImpl;

namespace {

void readUSA(Locale& locale)
{
    const XmlDocument document = XmlDocument::parse(i18n_details::ksUSAXml);
    locale.applyXmlDefinition(document.root());
}

/// An invalid locale where memory is lacking: an exception would end the process that loads the library.
Locale makeUSA()
{
    Locale locale;
    try {
        readUSA(locale);
    } catch (const std::bad_alloc&) {
        locale = Locale();
    }
    return locale;
}

}  // namespace

VEL_INIT_VALUES const Locale Locale::kUSA = makeUSA();

Locale::Locale() noexcept = default;
Locale::Locale(const Locale&) noexcept = default;
Locale::~Locale() = default;

Locale& Locale::operator=(const Locale& other) noexcept
{
    Locale(other).swap(*this);
    return *this;
}

void Locale::swap(Locale& other) noexcept
{
    m_hGuts.swap(other.m_hGuts);
}

bool Locale::isValid() const noexcept
{
    return !m_hGuts.isNull();
}

std::size_t Locale::shareCount() const
{
    return m_hGuts->referenceCount();
}

void Locale::applyXmlDefinition(const XmlElement& definition)
{
    const Handle<XmlLocaleImpl> hGuts =
        m_hGuts.isNull() ? makeHandle<XmlLocaleImpl>() : makeHandle<XmlLocaleImpl>(*m_hGuts);
    hGuts->applyXmlDefinition(definition);
    m_hGuts = hGuts;
}

template <typename Change>
void Locale::edit(Change change)
{
    if (m_hGuts->referenceCount() > 1) {
        // The shared one is given up last: the new value may be a reference to one of its fields.
        const Handle<XmlLocaleImpl> hCopy = makeHandle<XmlLocaleImpl>(*m_hGuts);
        change(*hCopy);
        m_hGuts = hCopy;
        return;
    }
    // Built by this class as a changeable object, and nobody else sees it.
    change(const_cast<XmlLocaleImpl&>(*m_hGuts));
}

const String& Locale::definitionName() const
{
    return m_hGuts->definitionName();
}

void Locale::getInfo(StringInfo info, StringBufferBase& out) const
{
    out.append(m_hGuts->info(info));
}

const String Locale::getInfoAsString(StringInfo info) const  // NOLINT(readability-const-return-type)
{
    return String(m_hGuts->info(info));
}

std::wstring_view Locale::getInfoView(StringInfo info) const
{
    return m_hGuts->info(info);
}

void Locale::getName(NameType type, unsigned index, StringBufferBase& out) const
{
    m_hGuts->getName(type, index, out);
}

const String Locale::getNameAsString(NameType type, unsigned index) const  // NOLINT(readability-const-return-type)
{
    StringBuffer<128> out;
    m_hGuts->getName(type, index, out);
    return out.toString();
}

void Locale::getAllNames(NameType type, std::vector<String>& out) const
{
    m_hGuts->getAllNames(type, out);
}

std::vector<String> Locale::storedNames(NameType type) const
{
    return m_hGuts->storedNames(type);
}

Locale::DateOrder Locale::getDateOrder() const
{
    return m_hGuts->getDateOrder();
}

bool Locale::is24Hours() const
{
    return m_hGuts->is24Hours();
}

unsigned Locale::getFirstDayOfWeek() const
{
    return m_hGuts->getFirstDayOfWeek();
}

const std::vector<std::pair<String, String>>& Locale::getScaleFactors() const
{
    return m_hGuts->getScaleFactors();
}

void Locale::getEra(const DateTime& date, StringBufferBase& out) const
{
    m_hGuts->getEra(date, out);
}

void Locale::mapString(Mapping mapping, const wchar_t* text, std::size_t length, StringBufferBase& out) const
{
    m_hGuts->mapString(mapping, text, length, out);
}

int Locale::collateStrings(CollateOptions options, const String& a, const String& b) const
{
    return m_hGuts->collateStrings(options, a, b);
}

GDVariant Locale::getLocaleMessage(const Handle<const MessageTable>& table) const
{
    return GDVariant::message(nameIn(table));
}

Message Locale::nameIn(const Handle<const MessageTable>& table) const
{
    const std::wstring_view key = m_hGuts->info(kLocaleMessageName);
    const Message* const found = table.isNull() ? nullptr : table->find(key);
    return found == nullptr ? Message::text(definitionName()) : *found;
}

const String& Locale::overridingCurrencyTag() const
{
    return m_hGuts->overridingCurrencyTag();
}

bool Locale::hasOverridingCurrencyTag() const
{
    return !overridingCurrencyTag().isEmpty();
}

void Locale::setOverridingCurrencyTag(const String& tag)
{
    if (overridingCurrencyTag() != tag) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingCurrencyTag(tag); });
    }
}

void Locale::clearOverridingCurrencyTag()
{
    setOverridingCurrencyTag(String());
}

const String& Locale::overridingDateFormat() const
{
    return m_hGuts->overridingDateFormat();
}

void Locale::setOverridingDateFormat(const String& format)
{
    if (overridingDateFormat() != format) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingDateFormat(format); });
    }
}

void Locale::clearOverridingDateFormat()
{
    setOverridingDateFormat(String());
}

const String& Locale::overridingTimeFormat() const
{
    return m_hGuts->overridingTimeFormat();
}

void Locale::setOverridingTimeFormat(const String& format)
{
    if (overridingTimeFormat() != format) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingTimeFormat(format); });
    }
}

void Locale::clearOverridingTimeFormat()
{
    setOverridingTimeFormat(String());
}

const String& Locale::overridingDecimalSeparator() const
{
    return m_hGuts->overridingDecimalSeparator();
}

void Locale::setOverridingDecimalSeparator(const String& separator)
{
    if (overridingDecimalSeparator() != separator) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingDecimalSeparator(separator); });
    }
}

void Locale::clearOverridingDecimalSeparator()
{
    setOverridingDecimalSeparator(String());
}

const String& Locale::overridingThousandsSeparator() const
{
    return m_hGuts->overridingThousandsSeparator();
}

void Locale::setOverridingThousandsSeparator(const String& separator)
{
    if (overridingThousandsSeparator() != separator) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingThousandsSeparator(separator); });
    }
}

void Locale::clearOverridingThousandsSeparator()
{
    setOverridingThousandsSeparator(String());
}

const String& Locale::overridingDateSeparator() const
{
    return m_hGuts->overridingDateSeparator();
}

Locale::DateOrder Locale::overridingDateOrdering() const
{
    return m_hGuts->overridingDateOrdering();
}

void Locale::setOverridingDateInputFormat(const String& dateSeparator, DateOrder order)
{
    if (overridingDateSeparator() != dateSeparator || overridingDateOrdering() != order) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingDateInputFormat(dateSeparator, order); });
    }
}

void Locale::clearOverridingDateInputFormat()
{
    setOverridingDateInputFormat(String(), kDateOrderEnd_);
}

const String& Locale::overridingTimeSeparator() const
{
    return m_hGuts->overridingTimeSeparator();
}

Locale::ClockIs24Hours Locale::overriding24Hours() const
{
    return m_hGuts->overriding24Hours();
}

void Locale::setOverridingTimeInputFormat(const String& timeSeparator, ClockIs24Hours clock)
{
    if (overridingTimeSeparator() != timeSeparator || overriding24Hours() != clock) {
        edit([&](XmlLocaleImpl& guts) { guts.setOverridingTimeInputFormat(timeSeparator, clock); });
    }
}

void Locale::clearOverridingTimeInputFormat()
{
    setOverridingTimeInputFormat(String(), kNotDefined24HR);
}

Locale::ClockIs24Hours Locale::getOverriding24Hours(const String& text)
{
    if (text == L"true") {
        return kIs24HR;
    }
    return text == L"false" ? kIs12HR : kNotDefined24HR;
}

const String& Locale::getDateOrderString(DateOrder order)
{
    return XmlLocaleImpl::getDateOrderString(order);
}

Locale::DateOrder Locale::getDateOrderByString(const String& text)
{
    return XmlLocaleImpl::guessDateOrderByString(text);
}

const StringEnumMap<Locale::StringInfo>& Locale::stringInfoMap() noexcept
{
    return *i18n_details::s_StringInfoMap;
}

const StringEnumMap<Locale::NameType>& Locale::nameTypeMap() noexcept
{
    return *i18n_details::s_NameTypeMap;
}

const StringEnumMap<Locale::DateOrder>& Locale::dateOrderMap() noexcept
{
    return *i18n_details::s_DateOrderMap;
}

}  // namespace vel
