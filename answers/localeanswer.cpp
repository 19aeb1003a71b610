#include "answers/localeanswer.h"

#include <string>
#include <vector>

#include "answers/text.h"

namespace answers {

namespace {

using vel::Locale;
using vel::String;

Json asJson(const std::vector<String>& texts)
{
    Json json = Json::array();
    for (const String& text : texts) {
        json.push_back(utf8Text(text));
    }
    return json;
}

/// The month or day names as dates show them, the fallbacks included.
std::vector<String> effectiveNames(const Locale& locale, Locale::NameType type)
{
    const unsigned count = type == Locale::kDay || type == Locale::kAbbreviatedDay ? 7 : 12;
    std::vector<String> names;
    for (unsigned index = 0; index < count; ++index) {
        names.push_back(locale.getNameAsString(type, index));
    }
    return names;
}

void addStrings(const Locale& locale, Json& json)
{
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        const auto each = static_cast<Locale::StringInfo>(info);
        json[utf8Text(Locale::stringInfoMap().find(each))] = utf8Text(locale.getInfoAsString(each));
    }
}

void addStoredNames(const Locale& locale, Json& json)
{
    for (unsigned type = 0; type < Locale::kNameTypeEnd_; ++type) {
        const auto each = static_cast<Locale::NameType>(type);
        json[utf8Text(Locale::nameTypeMap().find(each))] = asJson(locale.storedNames(each));
    }
}

void addScaleFactors(const Locale& locale, Json& json)
{
    json["scaleFactors"] = Json::array();
    for (const auto& [name, value] : locale.getScaleFactors()) {
        json["scaleFactors"].push_back(Json::array({utf8Text(name), utf8Text(value)}));
    }
}

Json effective(const Locale& locale)
{
    Json json = Json::object();
    for (unsigned type = Locale::kNominitiveMonth; type <= Locale::kAbbreviatedDay; ++type) {
        const auto each = static_cast<Locale::NameType>(type);
        json[utf8Text(Locale::nameTypeMap().find(each))] = asJson(effectiveNames(locale, each));
    }
    std::vector<String> formats;
    locale.getAllNames(Locale::kDateTimeFormats, formats);
    json["dateTimeFormats"] = asJson(formats);
    return json;
}

}  // namespace

Json describeLocale(const Locale& locale)
{
    Json json;
    json["locale"] = utf8Text(locale.definitionName());
    addStrings(locale, json);
    json["dateOrder"] = utf8Text(Locale::getDateOrderString(locale.getDateOrder()));
    json["24hours"] = locale.is24Hours();
    json["firstDayOfWeek"] = locale.getFirstDayOfWeek();
    if (locale.hasOverridingCurrencyTag()) {
        json["currencyTag"] = utf8Text(locale.overridingCurrencyTag());
    }
    addStoredNames(locale, json);
    addScaleFactors(locale, json);
    json["effective"] = effective(locale);
    return json;
}

}  // namespace answers
