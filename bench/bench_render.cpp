#include <unicode/gregocal.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>
#include <stdexcept>

#include "rows.h"
#include "webi18n-render/datepicture.h"
#include "webi18n-render/rendernumber.h"
#include "webi18n/currencylookup.h"

// Dates and numbers rendered beside ICU's formatters, which are built before; both append to a text that has room. What
// both write is compared once.

namespace bench {

namespace {

using vel::DateTime;
using vel::Decimal;
using vel::Locale;
using vel::RenderNumber;

constexpr DateTime kMoment = {2005, 12, 31, 15, 7, 1, 0};

using Buffer = vel::StringBuffer<127>;

void requireSuccess(UErrorCode status, const char* what)
{
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string(what) + " does not work");
    }
}

/// What a row compares must be the same text.
void requireSame(const vel::StringBufferBase& ours, const icu::UnicodeString& peer)
{
    std::string peerText;
    peer.toUTF8String(peerText);
    if (vel::toUtf8Lossy(ours.view()) != peerText) {
        throw std::runtime_error("\"" + vel::toUtf8Lossy(ours.view()) + "\" is not the peer's \"" + peerText + "\"");
    }
}

Locale localeOf(const Data& data, const wchar_t* name)
{
    Locale locale;
    const vel::Handle<const vel::ConfigReader> config = packConfiguration(data);
    if (!loadCatalogue(data, *config)->findLocaleByDefinitionName(name, locale)) {
        throw std::runtime_error("the pack lacks a locale");
    }
    return locale;
}

// ----------------------------------------------------------------------------------------------------------- dates

struct DateSample
{
    const wchar_t* m_sPicture;
    const char* m_sIcuPattern;
    const wchar_t* m_sLocale;
    const char* m_sIcuLocale;
    const char* m_sName;
};

constexpr DateSample kDates[] = {
    {L"M/d/yyyy", "M/d/yyyy", L"en-us", "en_US", "date, short en-us"},
    {L"dddd, MMMM d, yyyy h:mm:ss tt", "EEEE, MMMM d, yyyy h:mm:ss a", L"en-us", "en_US", "date and time, long en-us"},
    {L"dd.MM.yyyy HH:mm:ss", "dd.MM.yyyy HH:mm:ss", L"de-de", "de_DE", "date and time, digits de-de"},
    {L"dddd, d MMMM yyyy", "EEEE, d MMMM yyyy", L"ru-ru", "ru_RU", "date, genitive ru-ru"},
    {L"yyyy年M月d日dddd", "y年M月d日EEEE", L"ja-jp", "ja_JP", "date, long ja-jp"}};

UDate peerMoment()
{
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*icu::TimeZone::getGMT(), status);
    calendar.clear();
    calendar.set(kMoment.m_nYear, kMoment.m_nMonth - 1, kMoment.m_nDay, kMoment.m_nHour, kMoment.m_nMinute,
                 kMoment.m_nSecond);
    const UDate moment = calendar.getTime(status);
    requireSuccess(status, "icu::GregorianCalendar");
    return moment;
}

Contest dateContest(const DateSample& sample, const Data& data, bool isCompiled)
{
    const Locale locale = localeOf(data, sample.m_sLocale);
    const vel::DatePicture picture(sample.m_sPicture);
    UErrorCode status = U_ZERO_ERROR;
    const auto format = std::make_shared<icu::SimpleDateFormat>(icu::UnicodeString::fromUTF8(sample.m_sIcuPattern),
                                                                icu::Locale(sample.m_sIcuLocale), status);
    requireSuccess(status, "icu::SimpleDateFormat");
    format->setTimeZone(*icu::TimeZone::getGMT());
    const UDate moment = peerMoment();
    Buffer ours;
    icu::UnicodeString peer;
    picture.append(kMoment, locale, ours);
    requireSame(ours, format->format(moment, peer));
    const Batch compiled = repeated([=] {
        Buffer out;
        picture.append(kMoment, locale, out);
        keep(out.data());
    });
    const Batch once = repeated([locale, text = std::wstring(sample.m_sPicture)] {
        Buffer out;
        vel::DatePicture::append(text, kMoment, locale, out);
        keep(out.data());
    });
    return {isCompiled ? compiled : once, repeated([=] {
                icu::UnicodeString out;
                keep(format->format(moment, out).getBuffer());
            })};
}

// --------------------------------------------------------------------------------------------------------- numbers

struct NumberSample
{
    std::int64_t m_nInteger;
    double m_nValue;  ///< used where digits are asked for
    int m_nDigits;    ///< -1 for the integer
    const wchar_t* m_sLocale;
    const char* m_sIcuLocale;
    const char* m_sName;
};

constexpr NumberSample kNumbers[] = {{1234567, 0, -1, L"en-us", "en_US", "integer 1234567 en-us"},
                                     {-42, 0, -1, L"en-us", "en_US", "integer -42 en-us"},
                                     {0, 1234567.891, 2, L"en-us", "en_US", "double 1234567.891 to 2 digits en-us"},
                                     {0, -1234567.891, 2, L"de-de", "de_DE", "double -1234567.891 to 2 digits de-de"},
                                     {0, 0.25, 2, L"en-us", "en_US", "double 0.25 to 2 digits en-us"}};

Decimal decimalOf(const NumberSample& sample)
{
    return sample.m_nDigits < 0 ? Decimal::ofInteger(sample.m_nInteger)
                                : Decimal::ofDouble(sample.m_nValue, static_cast<unsigned>(sample.m_nDigits));
}

Contest numberContest(const NumberSample& sample, const Data& data)
{
    const Locale locale = localeOf(data, sample.m_sLocale);
    const auto precision = sample.m_nDigits < 0 ? icu::number::Precision::integer()
                                                : icu::number::Precision::fixedFraction(sample.m_nDigits);
    const auto formatter = std::make_shared<icu::number::LocalizedNumberFormatter>(
        icu::number::NumberFormatter::withLocale(icu::Locale(sample.m_sIcuLocale)).precision(precision));
    const auto format = [=](UErrorCode& status) {
        return sample.m_nDigits < 0 ? formatter->formatInt(sample.m_nInteger, status)
                                    : formatter->formatDouble(sample.m_nValue, status);
    };
    // The peer compiles itself after a few calls; what is measured is the compiled one.
    UErrorCode status = U_ZERO_ERROR;
    for (int i = 0; i < 100; ++i) {
        format(status);
    }
    Buffer ours;
    RenderNumber::append(decimalOf(sample), locale, {}, ours);
    requireSame(ours, format(status).toString(status));
    requireSuccess(status, "icu::number::LocalizedNumberFormatter");
    return {repeated([=] {
                Buffer out;
                keep(sample);
                RenderNumber::append(decimalOf(sample), locale, {}, out);
                keep(out.data());
            }),
            repeated([=] {
                UErrorCode ignored = U_ZERO_ERROR;
                const icu::number::FormattedNumber number = format(ignored);
                keep(number.toTempString(ignored).getBuffer());
            })};
}

Contest percentContest(const Data& data)
{
    const Locale locale = localeOf(data, L"en-us");
    const auto formatter = std::make_shared<icu::number::LocalizedNumberFormatter>(
        icu::number::NumberFormatter::withLocale(icu::Locale::getUS())
            .unit(icu::MeasureUnit::getPercent())
            .scale(icu::number::Scale::powerOfTen(2))
            .precision(icu::number::Precision::fixedFraction(1)));
    constexpr double kRatio = 0.2563;
    UErrorCode status = U_ZERO_ERROR;
    for (int i = 0; i < 100; ++i) {
        formatter->formatDouble(kRatio, status);
    }
    Buffer ours;
    RenderNumber::appendPercent(Decimal::ofDouble(kRatio, 6), locale, {1, true}, ours);
    requireSame(ours, formatter->formatDouble(kRatio, status).toString(status));
    requireSuccess(status, "icu::number::LocalizedNumberFormatter");
    return {repeated([=] {
                Buffer out;
                RenderNumber::appendPercent(Decimal::ofDouble(kRatio, 6), locale, {1, true}, out);
                keep(out.data());
            }),
            repeated([=] {
                UErrorCode ignored = U_ZERO_ERROR;
                keep(formatter->formatDouble(kRatio, ignored).toTempString(ignored).getBuffer());
            })};
}

Contest amountContest(const Data& data)
{
    const Locale locale = localeOf(data, L"en-us");
    const vel::CurrencyLookup currencies(data.currencies());
    const vel::Handle<const vel::Currency> dollar = currencies.lookupCurrencyTag(L"loc:en-us");
    UErrorCode status = U_ZERO_ERROR;
    const auto formatter = std::make_shared<icu::number::LocalizedNumberFormatter>(
        icu::number::NumberFormatter::withLocale(icu::Locale::getUS()).unit(icu::CurrencyUnit(u"USD", status)));
    constexpr std::int64_t kAmount = -1234567;
    for (int i = 0; i < 100; ++i) {
        formatter->formatInt(kAmount, status);
    }
    Buffer ours;
    RenderNumber::appendAmount(Decimal::ofInteger(kAmount), *dollar, locale, {}, ours);
    requireSame(ours, formatter->formatInt(kAmount, status).toString(status));
    requireSuccess(status, "icu::number::LocalizedNumberFormatter");
    return {repeated([=] {
                Buffer out;
                RenderNumber::appendAmount(Decimal::ofInteger(kAmount), *dollar, locale, {}, out);
                keep(out.data());
            }),
            repeated([=] {
                UErrorCode ignored = U_ZERO_ERROR;
                keep(formatter->formatInt(kAmount, ignored).toTempString(ignored).getBuffer());
            })};
}

}  // namespace

void addRenderRows(std::vector<Situation>& rows, const Data& data)
{
    const Target dateTarget = {Target::kRatioAtLeast, 5};
    const Target numberTarget = {Target::kRatioAtLeast, 3};
    const std::string numberPeer = "icu::number::LocalizedNumberFormatter";
    for (const DateSample& sample : kDates) {
        rows.push_back({std::string("render ") + sample.m_sName, "icu::SimpleDateFormat::format", dateTarget,
                        [&sample, data] { return dateContest(sample, data, true); }});
    }
    rows.push_back({std::string("render once ") + kDates[1].m_sName, "icu::SimpleDateFormat::format, built before",
                    dateTarget, [data] { return dateContest(kDates[1], data, false); }});
    for (const NumberSample& sample : kNumbers) {
        rows.push_back({std::string("render ") + sample.m_sName, numberPeer, numberTarget,
                        [&sample, data] { return numberContest(sample, data); }});
    }
    rows.push_back(
        {"render percent 0.2563 to 1 digit en-us", numberPeer, numberTarget, [data] { return percentContest(data); }});
    rows.push_back(
        {"render amount of -1234567 dollars en-us", numberPeer, numberTarget, [data] { return amountContest(data); }});
}

}  // namespace bench
