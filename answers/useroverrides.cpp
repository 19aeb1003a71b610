#include "answers/useroverrides.h"

namespace answers {

namespace {

using vel::Locale;
using vel::String;

/// Applies one override, or removes it for an empty value; what is accepted when the value is not, else null.
using Apply = const char* (*)(Locale&, const String&);

const char* setDateOrder(Locale& locale, const String& value)
{
    const Locale::DateOrder order = Locale::getDateOrderByString(value);
    if (order == Locale::kDateOrderEnd_ && !value.isEmpty()) {
        return "accepted are mdy, dmy, ymd (or md, dm, ym)";
    }
    locale.setOverridingDateInputFormat(locale.overridingDateSeparator(), order);
    return nullptr;
}

const char* setClock(Locale& locale, const String& value)
{
    const Locale::ClockIs24Hours clock = Locale::getOverriding24Hours(value);
    if (clock == Locale::kNotDefined24HR && !value.isEmpty()) {
        return "accepted are true and false";
    }
    locale.setOverridingTimeInputFormat(locale.overridingTimeSeparator(), clock);
    return nullptr;
}

const char* setDateSeparator(Locale& locale, const String& value)
{
    locale.setOverridingDateInputFormat(value, locale.overridingDateOrdering());
    return nullptr;
}

const char* setTimeSeparator(Locale& locale, const String& value)
{
    locale.setOverridingTimeInputFormat(value, locale.overriding24Hours());
    return nullptr;
}

template <void (Locale::*set)(const String&)>
const char* setText(Locale& locale, const String& value)
{
    (locale.*set)(value);
    return nullptr;
}

struct Override
{
    const char* m_pKey;
    Apply m_pApply;
};

constexpr Override kOverrides[] = {
    {"currencyTag", &setText<&Locale::setOverridingCurrencyTag>},
    {"dateFormat", &setText<&Locale::setOverridingDateFormat>},
    {"timeFormat", &setText<&Locale::setOverridingTimeFormat>},
    {"decimalSeparator", &setText<&Locale::setOverridingDecimalSeparator>},
    {"thousandsSeparator", &setText<&Locale::setOverridingThousandsSeparator>},
    {"dateSeparator", &setDateSeparator},
    {"dateOrder", &setDateOrder},
    {"timeSeparator", &setTimeSeparator},
    {"24hours", &setClock},
};

}  // namespace

std::vector<const char*> userOverrides()
{
    std::vector<const char*> names;
    for (const Override& each : kOverrides) {
        names.push_back(each.m_pKey);
    }
    return names;
}

std::string userOverrideNames()
{
    std::string names;
    for (const Override& each : kOverrides) {
        names += (names.empty() ? "" : ", ") + std::string(each.m_pKey);
    }
    return names;
}

bool isUserOverride(std::string_view key)
{
    for (const Override& each : kOverrides) {
        if (key == each.m_pKey) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> applyUserOverride(std::string_view key, const String& value, Locale& locale)
{
    for (const Override& each : kOverrides) {
        if (key == each.m_pKey) {
            const char* accepted = each.m_pApply(locale, value);
            return accepted == nullptr ? std::nullopt : std::optional<std::string>(accepted);
        }
    }
    return "the keys are " + userOverrideNames();
}

}  // namespace answers
