#include "webi18n-render/datepicture.h"

#include <chrono>
#include <string>
#include <vector>

#include "picturescanner.h"
#include "textwriter.h"
#include "vel/core/refcounted.h"
#include "webi18n/localenames.h"

namespace vel {

namespace render_details {

namespace {

constexpr unsigned kDaysOfWeek = 7;

/// 0 (Monday) to 6, or kDaysOfWeek for a date that the Gregorian calendar does not have.
unsigned dayOfWeek(const DateTime& moment) noexcept
{
    const std::chrono::year_month_day date(std::chrono::year(moment.m_nYear), std::chrono::month(moment.m_nMonth),
                                           std::chrono::day(moment.m_nDay));
    // The calendar's types hold a byte: a larger number would come round to a valid one.
    if (moment.m_nMonth > 12 || moment.m_nDay > 31 || !date.ok()) {
        return kDaysOfWeek;
    }
    return std::chrono::weekday(std::chrono::sys_days(date)).iso_encoding() - 1;
}

void putDecimal(TextWriter& out, unsigned value, unsigned leastDigits)
{
    constexpr unsigned kMostDigits = 5;
    wchar_t digits[kMostDigits];
    unsigned next = kMostDigits;
    do {
        digits[--next] = static_cast<wchar_t>(L'0' + value % 10);
        value /= 10;
    } while (value != 0);
    while (kMostDigits - next < leastDigits) {
        digits[--next] = L'0';
    }
    out.put(std::wstring_view(digits + next, kMostDigits - next));
}

/// Renders the pieces of a picture one after the other.
class MomentWriter
{
public:
    MomentWriter(const DateTime& moment, const Locale& locale, bool isGenitive, StringBufferBase& out)
        : m_tMoment(moment),
          m_tLocale(locale),
          m_eMonthNames(isGenitive ? Locale::kGenetiveMonth : Locale::kNominitiveMonth),
          m_tOut(out)
    {}

    void put(const PicturePiece& piece);
    void put(std::wstring_view literal) { m_tOut.put(literal); }
    void flush() { m_tOut.flush(); }

private:
    void putDay(unsigned count);
    void putMonth(unsigned count);
    void putYear(unsigned count);
    void putMarker(unsigned count);
    unsigned hourOf12() const noexcept
    {
        const unsigned hour = m_tMoment.m_nHour % 12U;
        return hour == 0 ? 12 : hour;
    }

    const DateTime& m_tMoment;
    const Locale& m_tLocale;
    const Locale::NameType m_eMonthNames;
    TextWriter m_tOut;
};

void MomentWriter::put(const PicturePiece& piece)
{
    switch (piece.m_cLetter) {
    case L'd':
        return putDay(piece.m_nCount);
    case L'M':
        return putMonth(piece.m_nCount);
    case L'y':
        return putYear(piece.m_nCount);
    case L'H':
        return putDecimal(m_tOut, m_tMoment.m_nHour, piece.m_nCount);
    case L'h':
        return putDecimal(m_tOut, hourOf12(), piece.m_nCount);
    case L'm':
        return putDecimal(m_tOut, m_tMoment.m_nMinute, piece.m_nCount);
    case L's':
        return putDecimal(m_tOut, m_tMoment.m_nSecond, piece.m_nCount);
    case L't':
        return putMarker(piece.m_nCount);
    default:
        return m_tOut.put(piece.m_sLiteral);
    }
}

void MomentWriter::putDay(unsigned count)
{
    if (count <= 2) {
        return putDecimal(m_tOut, m_tMoment.m_nDay, count);
    }
    const unsigned day = dayOfWeek(m_tMoment);
    if (day == kDaysOfWeek) {
        return;
    }
    StringBuffer<64> name;
    m_tLocale.getName(count == 3 ? Locale::kAbbreviatedDay : Locale::kDay, day, name);
    // Without a name of its own the locale answers in English, from Sunday on: at this index is the day before.
    if (name.view() == s_pDayNames[day]) {
        return m_tOut.put(std::wstring_view(s_pDayNames[(day + 1) % kDaysOfWeek]));
    }
    m_tOut.put(name.view());
}

void MomentWriter::putMonth(unsigned count)
{
    if (count <= 2) {
        return putDecimal(m_tOut, m_tMoment.m_nMonth, count);
    }
    if (m_tMoment.m_nMonth >= 1 && m_tMoment.m_nMonth <= 12) {
        m_tLocale.getName(count == 3 ? Locale::kAbbreviatedMonth : m_eMonthNames, m_tMoment.m_nMonth - 1U,
                          m_tOut.flushed());
    }
}

void MomentWriter::putYear(unsigned count)
{
    const int year = m_tMoment.m_nYear;
    const unsigned magnitude = static_cast<unsigned>(year < 0 ? -year : year);
    if (count == 2) {
        return putDecimal(m_tOut, magnitude % 100, 2);
    }
    if (year < 0) {
        m_tOut.put(L'-');
    }
    putDecimal(m_tOut, magnitude, 4);
}

void MomentWriter::putMarker(unsigned count)
{
    const bool isMorning = m_tMoment.m_nHour % 24 < 12;
    const std::wstring_view marker = m_tLocale.getInfoView(isMorning ? Locale::kAM : Locale::kPM);
    m_tOut.put(marker.substr(0, count == 1 ? 1 : marker.size()));
}

}  // namespace

/// The pieces of one picture, literals that follow each other joined. Immutable.
class DateSteps : public RefCounted
{
public:
    explicit DateSteps(std::wstring_view picture);

    void render(const DateTime& moment, const Locale& locale, StringBufferBase& out) const;

private:
    /// A token, or the next so many characters of the literals.
    struct Step
    {
        wchar_t m_cLetter;
        unsigned m_nCount;
        std::size_t m_nLiteral;
    };

    void add(const PicturePiece& piece);

    std::vector<Step> m_vSteps;
    std::wstring m_sLiterals;
    bool m_bGenitive = false;
};

DateSteps::DateSteps(std::wstring_view picture)
{
    PictureScanner scanner(picture);
    PicturePiece piece;
    while (scanner.next(piece)) {
        add(piece);
    }
}

void DateSteps::add(const PicturePiece& piece)
{
    m_bGenitive = m_bGenitive || isDayOfMonth(piece);
    if (piece.m_cLetter != 0) {
        m_vSteps.push_back({piece.m_cLetter, piece.m_nCount, 0});
        return;
    }
    if (m_vSteps.empty() || m_vSteps.back().m_cLetter != 0) {
        m_vSteps.push_back({0, 0, 0});
    }
    m_vSteps.back().m_nLiteral += piece.m_sLiteral.size();
    m_sLiterals += piece.m_sLiteral;
}

void DateSteps::render(const DateTime& moment, const Locale& locale, StringBufferBase& out) const
{
    MomentWriter writer(moment, locale, m_bGenitive, out);
    std::wstring_view literals = m_sLiterals;
    for (const Step& step : m_vSteps) {
        writer.put({step.m_cLetter, step.m_nCount, literals.substr(0, step.m_nLiteral)});
        literals.remove_prefix(step.m_nLiteral);
    }
    writer.flush();
}

}  // namespace render_details

namespace {

/// A picture without tokens asks nothing of the locale; that shall not hide that there is none.
void requireValid(const Locale& locale)
{
    locale.definitionName();
}

}  // namespace

DatePicture::DatePicture() noexcept = default;
DatePicture::DatePicture(std::wstring_view picture) : m_hSteps(makeHandle<const render_details::DateSteps>(picture))
{}
DatePicture::DatePicture(const DatePicture&) noexcept = default;
DatePicture& DatePicture::operator=(const DatePicture&) noexcept = default;
DatePicture::~DatePicture() = default;

void DatePicture::append(const DateTime& moment, const Locale& locale, StringBufferBase& out) const
{
    requireValid(locale);
    if (!m_hSteps.isNull()) {
        m_hSteps->render(moment, locale, out);
    }
}

void DatePicture::append(std::wstring_view picture, const DateTime& moment, const Locale& locale, StringBufferBase& out)
{
    requireValid(locale);
    render_details::MomentWriter writer(moment, locale, render_details::hasDayOfMonth(picture), out);
    render_details::PictureScanner scanner(picture);
    render_details::PicturePiece piece;
    while (scanner.next(piece)) {
        writer.put(piece);
    }
    writer.flush();
}

}  // namespace vel
