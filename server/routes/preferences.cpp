#include "preferences.h"

#include "answers/text.h"
#include "answers/useroverrides.h"
#include "fields.h"
#include "routes/routes.h"
#include "serverlimits.h"

namespace server {

using answers::Json;
using answers::utf8Text;
using vel::Locale;
using vel::String;

namespace {

Json errorOf(const char* field, const std::string& message)
{
    return {{"field", field}, {"message", message}};
}

/// What the preferences make of the locale.
Json effectOf(const Locale& locale)
{
    Json json;
    for (const Locale::StringInfo info :
         {Locale::kDateShortFormat, Locale::kTimeFormat, Locale::kDateInputFormat, Locale::kTimeInputFormat,
          Locale::kDateSeparator, Locale::kTimeSeparator, Locale::kDecimalSeparator, Locale::kThousandsSeparator}) {
        json[utf8Text(Locale::stringInfoMap().find(info))] = utf8Text(locale.getInfoView(info));
    }
    json["dateOrder"] = utf8Text(Locale::getDateOrderString(locale.getDateOrder()));
    json["24hours"] = locale.is24Hours();
    json["currencyTag"] = utf8Text(locale.overridingCurrencyTag());
    return json;
}

}  // namespace

HttpAnswer answerPreferences(const Call& call)
{
    const Fields fields(call, answers::userOverrides());
    Locale locale = call.plainLocale();
    Parameters accepted;
    Json json;
    json["locale"] = utf8Text(locale.definitionName());
    json["preferences"] = Json::object();
    json["errors"] = Json::array();
    for (const char* key : answers::userOverrides()) {
        const String value = fields.text(key).value_or(String());
        if (const std::string fault = preferenceFault(key, value); !fault.empty()) {
            json["errors"].push_back(errorOf(key, "The preference " + std::string(key) + " " + fault + "."));
        } else if (!value.isEmpty()) {
            json["preferences"][key] = utf8Text(value);
            accepted.emplace_back(key, value);
        }
    }
    const std::string cookie = cookieOf(accepted);
    if (cookie.size() > kCookieBytes) {
        throw Refusal{400, "too-large", "The preferences are too large for a cookie."};
    }
    applyPreferences(accepted, locale);
    json["cookie"] = cookie;
    json["effect"] = effectOf(locale);
    return call.answer(json, locale);
}

}  // namespace server
