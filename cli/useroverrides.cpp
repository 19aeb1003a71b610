#include "useroverrides.h"

#include "failures.h"
#include "text.h"

namespace cli {

namespace {

using vel::Locale;
using vel::String;

void setDateOrder(Locale& locale, const String& value)
{
    const Locale::DateOrder order = Locale::getDateOrderByString(value);
    if (order == Locale::kDateOrderEnd_) {
        throw UsageError("--user dateOrder=" + utf8Text(value) + ": accepted are mdy, dmy, ymd (or md, dm, ym)");
    }
    locale.setOverridingDateInputFormat(locale.overridingDateSeparator(), order);
}

void setClock(Locale& locale, const String& value)
{
    const Locale::ClockIs24Hours clock = Locale::getOverriding24Hours(value);
    if (clock == Locale::kNotDefined24HR) {
        throw UsageError("--user 24hours=" + utf8Text(value) + ": accepted are true and false");
    }
    locale.setOverridingTimeInputFormat(locale.overridingTimeSeparator(), clock);
}

void setDateSeparator(Locale& locale, const String& value)
{
    locale.setOverridingDateInputFormat(value, locale.overridingDateOrdering());
}

void setTimeSeparator(Locale& locale, const String& value)
{
    locale.setOverridingTimeInputFormat(value, locale.overriding24Hours());
}

struct Override
{
    const char* m_pKey;
    void (*m_pApply)(Locale&, const String&);
};

constexpr Override kOverrides[] = {
    {"currencyTag", [](Locale& locale, const String& value) { locale.setOverridingCurrencyTag(value); }},
    {"dateFormat", [](Locale& locale, const String& value) { locale.setOverridingDateFormat(value); }},
    {"timeFormat", [](Locale& locale, const String& value) { locale.setOverridingTimeFormat(value); }},
    {"decimalSeparator", [](Locale& locale, const String& value) { locale.setOverridingDecimalSeparator(value); }},
    {"thousandsSeparator", [](Locale& locale, const String& value) { locale.setOverridingThousandsSeparator(value); }},
    {"dateSeparator", &setDateSeparator},
    {"dateOrder", &setDateOrder},
    {"timeSeparator", &setTimeSeparator},
    {"24hours", &setClock},
};

void applyOne(const std::string& setting, Locale& locale)
{
    const std::size_t equals = setting.find('=');
    const std::string key = setting.substr(0, equals);
    for (const Override& each : kOverrides) {
        if (equals != std::string::npos && key == each.m_pKey) {
            each.m_pApply(locale, wideText(std::string_view(setting).substr(equals + 1), "--user " + key));
            return;
        }
    }
    throw UsageError("--user " + setting + ": accepted is KEY=VALUE with the keys " + userOverrideNames());
}

}  // namespace

std::string userOverrideNames()
{
    std::string names;
    for (const Override& each : kOverrides) {
        names += (names.empty() ? "" : ", ") + std::string(each.m_pKey);
    }
    return names;
}

void applyUserOverrides(const std::vector<std::string>& settings, Locale& locale)
{
    for (const std::string& setting : settings) {
        applyOne(setting, locale);
    }
}

}  // namespace cli
