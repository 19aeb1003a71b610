#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/datetime.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/core/stringbuffer.h"
#include "vel/messages/gdvariant.h"
#include "vel/messages/messagetable.h"
#include "webi18n/stringenummap.h"

namespace vel {

class XmlElement;

namespace i18n_details {
class XmlLocaleImpl;
struct LocaleGuts;
}  // namespace i18n_details

/// The conventions of a language and region: formats, separators, names, date order, clock, first day of week, scale
/// factors, and a user's overrides of them.
///
/// A cheap value: copies share one immutable implementation, and the override setters first unshare it, so a change
/// never shows in another copy. A default-constructed Locale holds nothing: every operation but construction, copying,
/// swap, isValid and the static helpers throws InvalidHandleException on it.
///
/// Threads: copies may be made, passed, changed and destroyed on different threads; one Locale object is changed by one
/// thread at a time while no other uses it. Failure: an operation that throws (memory) leaves the Locale's value.
///
///     Locale mine = Locale::kUSA;                                  // shares
///     mine.setOverridingDateInputFormat(L".", Locale::kDMY);       // unshares, kUSA stays
///     mine.getInfoAsString(Locale::kDateInputFormat)   -> "dd.MM.yyyy"
///     Locale::kUSA.getInfoAsString(Locale::kDateInputFormat) -> "MM/dd/yyyy"
class WEBI18N_API Locale
{
public:
    // Every enumeration has a fixed type: hosts cast stored numbers to them, and what lies outside is dealt with.

    /// The string properties. Their names in definitions are in the table stringInfoMap().
    enum StringInfo : unsigned
    {
        kDateShortFormat = 0,
        kDateLongFormat = 1,
        kTimeFormat = 2,
        kDateInputFormat = 3,  ///< always built from the date separator and the date order
        kTimeInputFormat = 4,  ///< always built from the time separator and the clock
        kAM = 5,
        kPM = 6,
        kTimeSeparator = 7,
        kDateSeparator = 8,
        kThousandsSeparator = 9,
        kMonetaryThousandsSeparator = 10,
        kDecimalSeparator = 11,
        kMonetaryDecimalSeparator = 12,
        kListSeparator = 13,
        kPrimaryCurrencySymbol = 14,
        kNegativeNumberTemplate = 15,
        kDefaultLanguage = 16,
        kLocaleMessageName = 17,  ///< "localeDisplayMessage" in definitions: both spellings are kept
        kCharactersetList = 18,
        kCollationImplementation = 19,
        kCollationNLS_SORT = 20,
        kPercentFormat = 21,
        kPercentSymbolLocation = 22,
        kStringInfoEnd_ = 23
    };

    /// The name lists. The spellings are the ones that definitions and hosts use.
    enum NameType : unsigned
    {
        kNominitiveMonth = 0,
        kGenetiveMonth = 1,
        kAbbreviatedMonth = 2,
        kDay = 3,
        kAbbreviatedDay = 4,
        kDateFormats = 5,
        kTimeFormats = 6,
        kDateTimeFormats = 7,
        kNameTypeEnd_ = 8
    };

    enum DateOrder : unsigned
    {
        kMDY = 0,
        kDMY = 1,
        kYMD = 2,
        kDateOrderEnd_ = 3  ///< no order, or an invalid one
    };

    enum Mapping : unsigned
    {
        kLowerCase = 0,
        kUpperCase = 1
    };

    enum ClockIs24Hours : unsigned
    {
        kNotDefined24HR = 0,
        kIs24HR = 1,
        kIs12HR = 2
    };

    enum CollateOptions : unsigned
    {
        kCollateNoCase = 0,
        kCollateCase = 1
    };

    /// The built-in "en-us". Usable from any static initialiser; lives until the process exits.
    static const Locale kUSA;

    Locale() noexcept;
    Locale(const Locale&) noexcept;
    Locale& operator=(const Locale&) noexcept;
    ~Locale();
    void swap(Locale& other) noexcept;

    bool isValid() const noexcept;
    /// How many Locale objects share this one's data, itself included. For diagnosis.
    std::size_t shareCount() const;

    /// Reads a definition element on top of what this Locale holds (on top of the defaults when it holds nothing) into
    /// a new implementation, and refers to that. Other copies keep what they had. Bad values are logged and skipped.
    /// When it throws (memory), this Locale is unchanged.
    void applyXmlDefinition(const XmlElement& definition);
    /// The "name" of the definition, such as "en-us".
    const String& definitionName() const;

    /// Appends a string property, the user's override instead of the stored value where there is one. `info` below
    /// kStringInfoEnd_.
    void getInfo(StringInfo info, StringBufferBaseTemplate<wchar_t>& out) const;
    const String getInfoAsString(StringInfo info) const;  // NOLINT(readability-const-return-type)
    /// The same without a copy: valid while this Locale is neither changed nor destroyed.
    std::wstring_view getInfoView(StringInfo info) const;

    /// Appends one name: months by index 0 to 11, days by index 0 (Monday) to 6. Indexes past the locale's own list
    /// fall back to the full English names, where day 0 is Sunday; indexes past that append nothing.
    ///
    ///     en-us: kDay, 0 -> Monday        no day names: kDay, 0 -> Sunday
    ///     en-us: kGenetiveMonth, 0 -> January (no genitive list)
    ///     three abbreviated months: kAbbreviatedMonth, 11 -> December
    ///     kNominitiveMonth, 12 -> nothing
    ///
    /// The format lists are read with getAllNames; here they are reported as "false", kNameTypeEnd_ as "Invalid locale
    /// property name.".
    void getName(NameType type, unsigned index, StringBufferBaseTemplate<wchar_t>& out) const;
    const String getNameAsString(NameType type, unsigned index) const;  // NOLINT(readability-const-return-type)

    /// Delivers a format list. kDateFormats, kTimeFormats, and kDateTimeFormats when the locale has that list: `out` is
    /// replaced. kDateTimeFormats without a list: every date format with every time format, joined by a blank, is
    /// appended to `out`. Every other type is reported as "Invalid locale property name" and leaves `out`.
    void getAllNames(NameType type, std::vector<String>& out) const;

    /// A name list as the definition gave it: without the fallbacks of getName and the derived formats of getAllNames.
    /// Empty for a list that was never set, and for any other value than the eight types.
    std::vector<String> storedNames(NameType type) const;

    /// The user's order when overridden, else the definition's.
    DateOrder getDateOrder() const;
    /// The user's clock when overridden, else the definition's.
    bool is24Hours() const;
    /// 0 (Monday) to 6 (Sunday).
    unsigned getFirstDayOfWeek() const;
    /// Pairs of name and value ("K", "1000") in the definition's order. Valid while this Locale is not changed.
    const std::vector<std::pair<String, String>>& getScaleFactors() const;

    /// Appends nothing: the calendars served here have no era to show.
    void getEra(const DateTime& date, StringBufferBaseTemplate<wchar_t>& out) const;
    /// Appends the text unchanged under either mapping, deliberately: case mapping is not a matter of these locales.
    void mapString(Mapping mapping, const wchar_t* text, std::size_t length,
                   StringBufferBaseTemplate<wchar_t>& out) const;
    /// Compares by code point whatever the option, deliberately: linguistic order is a collator's.
    int collateStrings(CollateOptions options, const String& a, const String& b) const;

    /// The locale's display name in the table's language: the message named by kLocaleMessageName. Without a table or
    /// such a message: a text message of definitionName().
    GDVariant getLocaleMessage(const Handle<const MessageTable>& table) const;

    // The user's overrides. An empty text, kDateOrderEnd_ and kNotDefined24HR stand for "not overridden". Getters
    // return a reference that is valid while this Locale is not changed. Setting what is set already copies nothing.

    const String& overridingCurrencyTag() const;
    bool hasOverridingCurrencyTag() const;
    void setOverridingCurrencyTag(const String& tag);
    void clearOverridingCurrencyTag();

    /// Replaces kDateShortFormat.
    const String& overridingDateFormat() const;
    void setOverridingDateFormat(const String& format);
    void clearOverridingDateFormat();

    /// Replaces kTimeFormat.
    const String& overridingTimeFormat() const;
    void setOverridingTimeFormat(const String& format);
    void clearOverridingTimeFormat();

    /// Replaces the plain and the monetary decimal separator.
    const String& overridingDecimalSeparator() const;
    void setOverridingDecimalSeparator(const String& separator);
    void clearOverridingDecimalSeparator();

    /// Replaces the plain and the monetary thousands separator.
    const String& overridingThousandsSeparator() const;
    void setOverridingThousandsSeparator(const String& separator);
    void clearOverridingThousandsSeparator();

    /// Takes a separator and an order, not a format: kDateInputFormat is built from them. An empty separator or
    /// kDateOrderEnd_ leaves that half to the definition.
    const String& overridingDateSeparator() const;
    DateOrder overridingDateOrdering() const;
    void setOverridingDateInputFormat(const String& dateSeparator, DateOrder order);
    void clearOverridingDateInputFormat();

    /// Takes a separator and a clock, not a format: kTimeInputFormat is built from them. An empty separator or
    /// kNotDefined24HR leaves that half to the definition.
    const String& overridingTimeSeparator() const;
    ClockIs24Hours overriding24Hours() const;
    void setOverridingTimeInputFormat(const String& timeSeparator, ClockIs24Hours clock);
    void clearOverridingTimeInputFormat();

    /// "true" -> kIs24HR, "false" -> kIs12HR, anything else ("TRUE", "") -> kNotDefined24HR.
    static ClockIs24Hours getOverriding24Hours(const String& text);
    /// "mdy", "dmy" or "ymd"; empty for any other value.
    static const String& getDateOrderString(DateOrder order);
    /// Lenient: "mdy", "dmy", "ymd", or the first two letters; kDateOrderEnd_ for anything else.
    ///
    ///     "dmy" -> kDMY    "dm" -> kDMY    "md" -> kMDY    "ym" -> kYMD    "DMY", "d", "", "yd" -> kDateOrderEnd_
    static DateOrder getDateOrderByString(const String& text);

    /// The names of the enumerators in definitions.
    static const StringEnumMap<StringInfo>& stringInfoMap() noexcept;
    static const StringEnumMap<NameType>& nameTypeMap() noexcept;
    static const StringEnumMap<DateOrder>& dateOrderMap() noexcept;

private:
    friend struct i18n_details::LocaleGuts;
    friend class Currency;

    /// What getLocaleMessage gives.
    Message nameIn(const Handle<const MessageTable>& table) const;

    // Calls change(implementation) on this Locale's own implementation, a copy when others share it.
    template <typename Change>
    void edit(Change change);

    Handle<const i18n_details::XmlLocaleImpl> m_hGuts;
};

}  // namespace vel
