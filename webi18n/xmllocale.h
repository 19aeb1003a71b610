#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "sharedtexts.h"
#include "vel/core/copyonwrite.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/core/stringbuffer.h"
#include "webi18n/locale.h"

namespace vel {
class XmlElement;
}  // namespace vel

namespace vel::i18n_details {

/// The data behind Locale, filled from XML definitions. Copying copies every field; what copies have in common is held
/// once, so a definition that is based on another, and a user's copy with an override, cost what differs.
///
/// A shared object is never changed: applyXmlDefinition and the setters are called on objects that one thread owns
/// alone.
class XmlLocaleImpl final : public RefCounted
{
public:
    using NameList = SharedTexts;
    using ScaleFactors = std::vector<std::pair<String, String>>;

    /// The defaults: AM and PM are "am" and "pm", everything else is empty, 12-hour clock, two currency digits, kMDY,
    /// week begins on day 6.
    XmlLocaleImpl();
    XmlLocaleImpl(const XmlLocaleImpl&);

    void applyXmlDefinition(const XmlElement& definition);

    const String& definitionName() const noexcept { return m_sDefinitionName.get(); }
    /// The string property with the user's overrides applied.
    std::wstring_view info(Locale::StringInfo info) const noexcept;
    // What info gives for the properties that every parse of a date reads.
    std::wstring_view am() const noexcept { return stored(Locale::kAM); }
    std::wstring_view pm() const noexcept { return stored(Locale::kPM); }
    std::wstring_view timeSeparator() const noexcept
    {
        return m_sOverridingTimeSeparator.isEmpty() ? stored(Locale::kTimeSeparator)
                                                    : m_sOverridingTimeSeparator.view();
    }
    std::wstring_view dateSeparator() const noexcept
    {
        return m_sOverridingDateSeparator.isEmpty() ? stored(Locale::kDateSeparator)
                                                    : m_sOverridingDateSeparator.view();
    }
    void getName(Locale::NameType type, unsigned index, StringBufferBase& out) const;
    void getAllNames(Locale::NameType type, std::vector<String>& out) const;
    std::vector<String> storedNames(Locale::NameType type) const;
    Locale::DateOrder getDateOrder() const noexcept;
    bool is24Hours() const noexcept;
    unsigned getFirstDayOfWeek() const noexcept { return m_nFDOW; }
    const ScaleFactors& getScaleFactors() const noexcept { return m_tScaleFactors.get(); }
    void getEra(const DateTime& date, StringBufferBase& out) const;
    void mapString(Locale::Mapping mapping, const wchar_t* text, std::size_t length, StringBufferBase& out) const;
    int collateStrings(Locale::CollateOptions options, const String& a, const String& b) const;

    const String& overridingCurrencyTag() const noexcept { return m_sOverridingCurrencyTag; }
    const String& overridingDateFormat() const noexcept { return m_sOverridingDateFormat; }
    const String& overridingTimeFormat() const noexcept { return m_sOverridingTimeFormat; }
    const String& overridingDecimalSeparator() const noexcept { return m_sOverridingDecimalSeparator; }
    const String& overridingThousandsSeparator() const noexcept { return m_sOverridingThousandsSeparator; }
    const String& overridingDateSeparator() const noexcept { return m_sOverridingDateSeparator; }
    const String& overridingTimeSeparator() const noexcept { return m_sOverridingTimeSeparator; }
    Locale::ClockIs24Hours overriding24Hours() const noexcept { return m_eOverriding24Hours; }
    Locale::DateOrder overridingDateOrdering() const noexcept { return m_eOverridingDateOrder; }

    void setOverridingCurrencyTag(const String& tag) { m_sOverridingCurrencyTag = tag; }
    void setOverridingDateFormat(const String& format) { m_sOverridingDateFormat = format; }
    void setOverridingTimeFormat(const String& format) { m_sOverridingTimeFormat = format; }
    void setOverridingDecimalSeparator(const String& separator) { m_sOverridingDecimalSeparator = separator; }
    void setOverridingThousandsSeparator(const String& separator) { m_sOverridingThousandsSeparator = separator; }
    void setOverridingDateInputFormat(const String& dateSeparator, Locale::DateOrder order);
    void setOverridingTimeInputFormat(const String& timeSeparator, Locale::ClockIs24Hours clock);

    String buildDateInputFormat(std::wstring_view separator, Locale::DateOrder order) const;
    String buildTimeInputFormat(std::wstring_view separator, bool is24Hours) const;

    /// Exact: "mdy", "dmy" or "ymd"; empty for any other value.
    static const String& getDateOrderString(Locale::DateOrder order);
    /// Exact and case-sensitive; kDateOrderEnd_ for anything else.
    static Locale::DateOrder getDateOrderByString(const String& text);
    /// Lenient: three letters exactly, or the first two.
    static Locale::DateOrder guessDateOrderByString(const String& text);

private:
    /// A list of one text, or of none for the empty text.
    using Text = SharedTexts;
    using Strings = std::array<Text, Locale::kStringInfoEnd_>;
    using NameLists = std::array<NameList, Locale::kNameTypeEnd_>;

    static const CopyOnWrite<Strings>& freshStrings();

    std::wstring_view stored(Locale::StringInfo info) const noexcept { return (*m_aStrings)[info].front(); }
    void store(Locale::StringInfo info, std::wstring_view text);
    const NameList& nameList(Locale::NameType type) const noexcept { return (*m_aNameLists)[type]; }
    const String* overrideOf(Locale::StringInfo info) const noexcept;

    void detachMonetary(Locale::StringInfo monetary, Locale::StringInfo plain);
    void attachMonetary(Locale::StringInfo monetary, Locale::StringInfo plain);
    void applyProperty(const XmlElement& property);
    bool applyScalar(std::wstring_view name, const XmlElement& property);
    bool applyList(std::wstring_view name, const XmlElement& property);
    void applyDateOrder(const String& text);
    void applyFirstDayOfWeek(const String& text);
    void applyScaleFactors(const XmlElement& property);

    const NameList& monthNamesFor(Locale::NameType type) const;

    CopyOnWrite<String> m_sDefinitionName;
    CopyOnWrite<Strings> m_aStrings;
    bool m_b24Hours = false;
    std::uint32_t m_nCurrencyDigits = 2;
    Locale::DateOrder m_eDateOrder = Locale::kMDY;
    std::uint32_t m_nFDOW = 6;
    CopyOnWrite<NameLists> m_aNameLists;
    String m_sOverridingCurrencyTag;
    String m_sOverridingDateFormat;
    String m_sOverridingTimeFormat;
    String m_sOverridingDecimalSeparator;
    String m_sOverridingThousandsSeparator;
    String m_sOverridingDateSeparator;
    String m_sOverridingTimeSeparator;
    Locale::ClockIs24Hours m_eOverriding24Hours = Locale::kNotDefined24HR;
    Locale::DateOrder m_eOverridingDateOrder = Locale::kDateOrderEnd_;
    String m_sOverridingDateInputFormat;
    String m_sOverridingTimeInputFormat;
    CopyOnWrite<ScaleFactors> m_tScaleFactors;
};

/// The data of a Locale for the library's own readers.
struct LocaleGuts
{
    /// Throws InvalidHandleException for a Locale that holds nothing.
    static const XmlLocaleImpl& of(const Locale& locale) { return *locale.m_hGuts; }
};

}  // namespace vel::i18n_details
