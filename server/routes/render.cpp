#include <chrono>

#include "answers/localename.h"
#include "answers/text.h"
#include "routes/routes.h"
#include "samples.h"
#include "serverlimits.h"
#include "webi18n/parsedatetime.h"

namespace server {

using answers::Json;
using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;
using vel::String;

namespace {

/// One digit where two are asked for shows, day and month are not mistaken, and so do the afternoon's hours.
constexpr DateTime kSampleMoment = {2026, 2, 3, 16, 5, 9, 0};
constexpr const wchar_t* ksSampleNumber = L"1234567.89";

/// The parameter "date"; Refusal 400 for what is no date of the calendar.
DateTime momentIn(const Target& target)
{
    const String text = target.text("date", kNumberLength);
    if (text.isEmpty()) {
        return kSampleMoment;
    }
    DateTime moment = kSampleMoment;
    const auto type = ParseDateTime::parseXmlDateTime(text.data(), text.data() + text.length(), moment);
    const bool isDate = type == ParseDateTime::kXmlDate || type == ParseDateTime::kXmlDateTime;
    const std::chrono::year_month_day day(std::chrono::year(moment.m_nYear), std::chrono::month(moment.m_nMonth),
                                          std::chrono::day(moment.m_nDay));
    if (!isDate || !day.ok() || moment.m_nYear < 1 || moment.m_nYear > 9999) {
        throw Refusal{400,
                      "bad-parameter",
                      "The parameter date is not accepted: accepted is a date such as 2026-02-03 or "
                      "2026-02-03T16:05:09, in the years 1 to 9999.",
                      {},
                      "date"};
    }
    return moment;
}

Quantity numberIn(const Target& target)
{
    const String text = target.text("number", kNumberLength);
    const auto number = Quantity::of(text.isEmpty() ? String(ksSampleNumber) : text);
    if (!number) {
        throw Refusal{400,
                      "bad-parameter",
                      "The parameter number is not accepted: accepted are digits with a point, such as 1234567.89.",
                      {},
                      "number"};
    }
    return *number;
}

/// The currency that the parameter "currency" names, else the locale's.
vel::Handle<const vel::Currency> currencyFor(const Call& call, const Locale& locale)
{
    const auto tag = call.target().find("currency");
    if (!tag || tag->isEmpty()) {
        return currencyOf(locale, call.catalogues().currencies());
    }
    auto currency = call.catalogues().currencies().lookupCurrencyTag(*tag);
    if (currency.isNull()) {
        throw Refusal{404, "no-such-currency", "There is no currency of that tag.", {}, "currency"};
    }
    return currency;
}

}  // namespace

HttpAnswer answerRender(const Call& call)
{
    const DateTime moment = momentIn(call.target());
    const Quantity number = numberIn(call.target());
    const Locale locale = call.locale();
    const auto currency = currencyFor(call, locale);
    call.count(kStageRendering);
    Json json;
    json["locale"] = answers::utf8Text(locale.definitionName());
    json["tag"] = answers::languageTag(locale);
    json["direction"] = answers::directionOf(locale);
    json["dates"] = sampleDates(locale, moment);
    json["times"] = sampleTimes(locale, moment);
    json["dateTimes"] = sampleDateTimes(locale, moment);
    json["numbers"] = sampleNumbers(locale, number);
    json["amounts"] = currency.isNull() ? Json() : sampleAmounts(locale, number, *currency);
    json["month"] = sampleMonth(locale, moment);
    return call.answer(json, locale);
}

}  // namespace server
