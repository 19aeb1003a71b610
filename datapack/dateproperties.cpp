#include "dateproperties.h"

#include <unicode/calendar.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "icutext.h"
#include "patterns.h"

namespace datapack {
namespace {

Pattern patternOf(std::unique_ptr<icu::DateFormat> format, const PackLocale& locale)
{
    const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
    if (simple == nullptr) {
        throw std::runtime_error("ICU: no pattern behind a date format of " + locale.name);
    }
    icu::UnicodeString text;
    return readPattern(simple->toPattern(text));
}

Pattern datePattern(const PackLocale& locale, icu::DateFormat::EStyle style)
{
    return patternOf(std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateInstance(style, locale.icu)), locale);
}

Pattern timePattern(const PackLocale& locale, icu::DateFormat::EStyle style)
{
    return patternOf(std::unique_ptr<icu::DateFormat>(icu::DateFormat::createTimeInstance(style, locale.icu)), locale);
}

// The locale's best pattern for a set of fields, such as "yMMMEd".
class Skeletons
{
public:
    explicit Skeletons(const PackLocale& locale)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_pGenerator.reset(icu::DateTimePatternGenerator::createInstance(locale.icu, status));
        checkIcu(status, "patterns of " + locale.name);
    }

    Pattern best(const char16_t* skeleton)
    {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString text = m_pGenerator->getBestPattern(icu::UnicodeString(skeleton), status);
        checkIcu(status, "best pattern");
        return readPattern(text);
    }

private:
    std::unique_ptr<icu::DateTimePatternGenerator> m_pGenerator;
};

void addOnce(std::vector<std::string>& formats, const Pattern& pattern)
{
    const std::string tokens = toTokens(pattern);
    if (std::find(formats.begin(), formats.end(), tokens) == formats.end()) {
        formats.push_back(tokens);
    }
}

// From the longest to the shortest, then the numeric ones; every locale can also choose the international form.
std::vector<std::string> dateFormats(const PackLocale& locale, const Pattern& shortPattern)
{
    Skeletons skeletons(locale);
    std::vector<std::string> formats;
    addOnce(formats, withYear(datePattern(locale, icu::DateFormat::kFull), 4));
    addOnce(formats, withYear(datePattern(locale, icu::DateFormat::kLong), 4));
    addOnce(formats, withYear(skeletons.best(u"yMMMMEd"), 4));
    addOnce(formats, withYear(skeletons.best(u"yMMMEEEEd"), 4));
    addOnce(formats, withYear(skeletons.best(u"yMMMEd"), 4));
    addOnce(formats, withYear(skeletons.best(u"yMMMd"), 4));
    addOnce(formats, withYear(datePattern(locale, icu::DateFormat::kMedium), 4));
    addOnce(formats, withYear(skeletons.best(u"yMEd"), 4));
    addOnce(formats, withYear(shortPattern, 4));
    addOnce(formats, withYear(withDayAndMonth(shortPattern, 2), 4));
    addOnce(formats, withYear(withDayAndMonth(shortPattern, 1), 4));
    addOnce(formats, withYear(shortPattern, 2));
    addOnce(formats, withYear(withDayAndMonth(shortPattern, 2), 2));
    addOnce(formats, readPattern(u"yyyy-MM-dd"));
    return formats;
}

// The locale's own clock first, each with seconds and without, padded and not; then the other clock.
std::vector<std::string> timeFormats(const PackLocale& locale, const Pattern& mediumPattern)
{
    Skeletons skeletons(locale);
    const bool is24 = is24Hours(mediumPattern);
    const Pattern otherClock = withDayPeriod(skeletons.best(is24 ? u"hms" : u"Hms"));
    std::vector<std::string> formats;
    addOnce(formats, mediumPattern);
    addOnce(formats, withHour(mediumPattern, 2));
    addOnce(formats, timePattern(locale, icu::DateFormat::kShort));
    addOnce(formats, otherClock);
    addOnce(formats, withHour(otherClock, 2));
    addOnce(formats, withDayPeriod(skeletons.best(is24 ? u"hm" : u"Hm")));
    return formats;
}

// A typed date is split at the time separator before the date separator is looked at, so a date separator that begins
// with the time separator would turn every typed date into a time. The colon is always read as a time separator.
std::string timeSeparator(const Pattern& mediumPattern, const std::string& dateSeparator)
{
    std::string separator = fieldSeparator(mediumPattern);
    if (separator.empty() || dateSeparator.rfind(separator, 0) == 0) {
        return ":";
    }
    return separator;
}

std::vector<std::string> names(const icu::UnicodeString* first, int32_t count)
{
    std::vector<std::string> result;
    result.reserve(static_cast<size_t>(count));
    for (int32_t index = 0; index < count; ++index) {
        result.push_back(toUtf8(first[index]));
    }
    return result;
}

std::vector<std::string> monthNames(const icu::DateFormatSymbols& symbols,
                                    icu::DateFormatSymbols::DtContextType context,
                                    icu::DateFormatSymbols::DtWidthType width)
{
    int32_t count = 0;
    const icu::UnicodeString* first = symbols.getMonths(count, context, width);
    return names(first, count);
}

// A definition has one list of days, so they are taken in the form that the locale's own dates ask for: Finnish ones
// use the stand-alone form (cccc), which differs there from the one for sentences (EEEE).
icu::DateFormatSymbols::DtContextType dayContext(const Pattern& fullPattern)
{
    for (const PatternPiece& piece : fullPattern) {
        if (piece.letter == u'c') {
            return icu::DateFormatSymbols::STANDALONE;
        }
    }
    return icu::DateFormatSymbols::FORMAT;
}

// ICU has an unused entry first and counts from Sunday.
std::vector<std::string> dayNames(const icu::DateFormatSymbols& symbols, icu::DateFormatSymbols::DtContextType context,
                                  icu::DateFormatSymbols::DtWidthType width)
{
    int32_t count = 0;
    const icu::UnicodeString* first = symbols.getWeekdays(count, context, width);
    std::vector<std::string> days = names(first + UCAL_MONDAY, count - UCAL_MONDAY);
    days.push_back(toUtf8(first[UCAL_SUNDAY]));
    return days;
}

void addNames(const PackLocale& locale, const Pattern& fullPattern, Properties& properties)
{
    using Symbols = icu::DateFormatSymbols;
    UErrorCode status = U_ZERO_ERROR;
    const Symbols symbols(locale.icu, status);
    checkIcu(status, "names of " + locale.name);
    properties.lists["monthNames"] = monthNames(symbols, Symbols::STANDALONE, Symbols::WIDE);
    const std::vector<std::string> inDate = monthNames(symbols, Symbols::FORMAT, Symbols::WIDE);
    if (inDate != properties.lists["monthNames"]) {
        properties.lists["genetiveMonthNames"] = inDate;
    }
    properties.lists["abbrevMonthNames"] = monthNames(symbols, Symbols::FORMAT, Symbols::ABBREVIATED);
    properties.lists["dayNames"] = dayNames(symbols, dayContext(fullPattern), Symbols::WIDE);
    properties.lists["abbrevDayNames"] = dayNames(symbols, dayContext(fullPattern), Symbols::ABBREVIATED);
    int32_t count = 0;
    const icu::UnicodeString* markers = symbols.getAmPmStrings(count);
    properties.scalars["am"] = toUtf8(typable(markers[0]));
    properties.scalars["pm"] = toUtf8(typable(markers[1]));
}

std::string firstDayOfWeek(const PackLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(locale.icu, status));
    checkIcu(status, "calendar of " + locale.name);
    const UCalendarDaysOfWeek day = calendar->getFirstDayOfWeek(status);
    checkIcu(status, "first day of week of " + locale.name);
    return std::to_string((day + 7 - UCAL_MONDAY) % 7);
}

}  // namespace

void addDateProperties(const PackLocale& locale, Properties& properties)
{
    const Pattern shortPattern = datePattern(locale, icu::DateFormat::kShort);
    const Pattern fullPattern = datePattern(locale, icu::DateFormat::kFull);
    const Pattern mediumPattern = timePattern(locale, icu::DateFormat::kMedium);
    auto& scalars = properties.scalars;
    const std::string separator = fieldSeparator(shortPattern);
    scalars["dateSeparator"] = separator.empty() ? "/" : separator;
    scalars["timeSeparator"] = timeSeparator(mediumPattern, scalars["dateSeparator"]);
    scalars["dateShortFormat"] = toTokens(withYear(shortPattern, 4));
    scalars["dateLongFormat"] = toTokens(withYear(fullPattern, 4));
    scalars["timeFormat"] = toTokens(mediumPattern);
    scalars["dateOrder"] = dateOrder(shortPattern);
    scalars["24hours"] = is24Hours(mediumPattern) ? "true" : "false";
    scalars["firstDayOfWeek"] = firstDayOfWeek(locale);
    properties.lists["dateFormats"] = dateFormats(locale, shortPattern);
    properties.lists["timeFormats"] = timeFormats(locale, mediumPattern);
    addNames(locale, fullPattern, properties);
}

}  // namespace datapack
