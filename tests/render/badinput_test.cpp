#include <limits>
#include <random>

#include "exacttext.h"
#include "printers.h"
#include "rendering.h"
#include "slowdatepicture.h"
#include "vel/core/exception.h"

// Whatever is asked for has a text, which a plain twin gives too, and nothing is read outside of its bounds.

namespace {

using rendering::decimal;
using vel::DateTime;
using vel::Locale;

std::wstring rendered(std::wstring_view picture, const DateTime& moment, const Locale& locale)
{
    const testsupport::ExactText exact(picture);
    vel::StringBuffer<8> compiled;
    vel::StringBuffer<8> once;
    vel::DatePicture(exact.view()).append(moment, locale, compiled);
    vel::DatePicture::append(exact.view(), moment, locale, once);
    EXPECT_EQ(compiled.view(), once.view());
    return std::wstring(compiled.view());
}

TEST(BadPicture, EveryFieldOutOfItsRange)
{
    const std::wstring picture = L"d dd ddd dddd M MM MMM MMMM yy yyyy h hh H HH m mm s ss t tt";
    for (const unsigned value : {0U,  1U,  12U,  13U,  23U,  24U,  25U,    31U,    32U,    59U,
                                 60U, 99U, 100U, 255U, 256U, 257U, 12345U, 32767U, 32768U, 65535U}) {
        for (int field = 0; field < 6; ++field) {
            DateTime moment{2005, 12, 31, 15, 7, 1, 0};
            std::uint16_t* const fields[] = {&moment.m_nMonth,  &moment.m_nDay,    &moment.m_nHour,
                                             &moment.m_nMinute, &moment.m_nSecond, nullptr};
            if (fields[field] != nullptr) {
                *fields[field] = static_cast<std::uint16_t>(value);
            } else {
                moment.m_nYear = static_cast<std::int16_t>(value);
            }
            for (const char* const name : {"en-us", "ru-ru", "ja-jp"}) {
                const Locale locale = rendering::packLocale(name);
                EXPECT_EQ(rendered(picture, moment, locale), reference::renderDate(picture, moment, locale));
            }
        }
    }
}

TEST(BadPicture, EveryShortTextOfTheMeaningfulCharacters)
{
    const std::wstring_view alphabet = L"dMyt'x";
    const DateTime moment{2005, 2, 5, 15, 7, 1, 0};
    for (std::size_t length = 0, count = 1; length <= 5; ++length, count *= alphabet.size()) {
        for (std::size_t number = 0; number < count; ++number) {
            std::wstring picture;
            for (std::size_t rest = number; picture.size() < length; rest /= alphabet.size()) {
                picture += alphabet[rest % alphabet.size()];
            }
            ASSERT_EQ(rendered(picture, moment, Locale::kUSA), reference::renderDate(picture, moment, Locale::kUSA));
        }
    }
}

TEST(BadPicture, RandomPicturesAndMoments)
{
    const std::wstring_view alphabet = L"dddddMMMMMyyyyhhHHmmsstt'' ./\u5E74\U0001F600ED";
    std::mt19937 random(5);
    const std::vector<Locale> locales = {Locale::kUSA, rendering::packLocale("ru-ru"), rendering::packLocale("ar-eg")};
    for (int i = 0; i < 20000; ++i) {
        std::wstring picture;
        for (std::size_t length = random() % 24; picture.size() < length;) {
            picture += alphabet[random() % alphabet.size()];
        }
        const auto below = [&](unsigned end) { return static_cast<std::uint16_t>(random() % end); };
        const DateTime moment{
            static_cast<std::int16_t>(random()), below(14), below(33), below(26), below(61), below(61), 0};
        const Locale& locale = locales[i % locales.size()];
        ASSERT_EQ(rendered(picture, moment, locale), reference::renderDate(picture, moment, locale));
    }
}

/// Longer than the bits of a number, which would make a shift come round.
TEST(BadPicture, LongRunsOfALetter)
{
    const DateTime moment{2005, 2, 5, 15, 7, 1, 0};
    for (const wchar_t letter : {L'd', L'M', L'y', L'h', L'H', L'm', L's', L't'}) {
        for (std::size_t length = 5; length <= 300; ++length) {
            const std::wstring picture(length, letter);
            EXPECT_EQ(rendered(picture, moment, Locale::kUSA), picture);
        }
    }
}

TEST(BadPicture, VeryLongOnes)
{
    constexpr std::size_t kLength = 1'000'000;
    const DateTime moment{2005, 2, 5, 15, 7, 1, 0};
    EXPECT_EQ(rendered(std::wstring(kLength, L'x'), moment, Locale::kUSA), std::wstring(kLength, L'x'));
    EXPECT_EQ(rendered(std::wstring(kLength, L'd'), moment, Locale::kUSA), std::wstring(kLength, L'd'));
    EXPECT_EQ(rendered(std::wstring(kLength, L'\''), moment, Locale::kUSA), std::wstring(kLength / 2, L'\''));
    std::wstring tokens;
    std::wstring expected;
    for (std::size_t i = 0; i < kLength / 4; ++i) {
        tokens += L"dMyy";
        expected += L"5205";
    }
    EXPECT_EQ(rendered(tokens, moment, Locale::kUSA), expected);
}

TEST(BadLocale, IsReportedAndNothingIsAppended)
{
    const Locale none;
    const DateTime moment{2005, 2, 5, 15, 7, 1, 0};
    const vel::Handle<const vel::Currency> currency(new vel::Currency());
    const vel::RenderNumber::ScaleFactor factor(L"K", L"1000");
    const vel::Decimal number = decimal("-1.5");
    vel::StringBuffer<63> out;
    EXPECT_THROW(vel::DatePicture().append(moment, none, out), vel::InvalidHandleException);
    EXPECT_THROW(vel::DatePicture(L"'text'").append(moment, none, out), vel::InvalidHandleException);
    EXPECT_THROW(vel::DatePicture::append(L"", moment, none, out), vel::InvalidHandleException);
    EXPECT_THROW(vel::RenderNumber::append(number, none, {}, out), vel::InvalidHandleException);
    EXPECT_THROW(vel::RenderNumber::appendPercent(number, none, {}, out), vel::InvalidHandleException);
    EXPECT_THROW(vel::RenderNumber::appendScaled(number, factor, none, {}, out), vel::InvalidHandleException);
    EXPECT_THROW(vel::RenderNumber::findScaleFactor(decimal("nan"), none), vel::InvalidHandleException);
    EXPECT_THROW(vel::RenderNumber::appendAmount(number, *currency, none, {}, out), vel::InvalidHandleException);
    EXPECT_TRUE(out.isEmpty());
}

TEST(BadNumber, DigitsOutOfTheirRange)
{
    constexpr int kMost = std::numeric_limits<std::int32_t>::max();
    constexpr int kLeast = std::numeric_limits<std::int32_t>::min();
    const std::string zeros(63, '0');
    EXPECT_EQ(rendering::number(decimal("1.5"), Locale::kUSA, kMost), "1.5" + zeros);
    EXPECT_EQ(rendering::number(decimal("1.5"), Locale::kUSA, kLeast), "1.5");
    EXPECT_EQ(rendering::percent(decimal("0.015"), Locale::kUSA, kMost), "1.5" + zeros + "%");
    vel::StringBuffer<63> out;
    vel::RenderNumber::appendScaled(decimal("1500"), {L"K", L"1000"}, Locale::kUSA, {kMost, true}, out);
    EXPECT_EQ(vel::toUtf8Lossy(out.view()), "1.5" + zeros + " K");
}

TEST(BadNumber, TheLargestHaveRoomInEveryOperation)
{
    const std::string nines(320, '9');
    const std::string places(64, '9');
    const vel::Decimal most = decimal("-" + nines + "." + places);
    EXPECT_EQ(rendering::show(most), "-" + nines + "." + places);
    std::string grouped = "-1";
    for (int i = 0; i < 107; ++i) {
        grouped += i == 0 ? "00" : ",000";
    }
    // 1 and 320 zeros: 321 digits are 107 groups of three.
    EXPECT_EQ(rendering::number(most, Locale::kUSA, 0), grouped);
    EXPECT_EQ(rendering::percent(most, Locale::kUSA, 62).size(), 1U + 322 + 107 + 1 + 62 + 1);
    // 323 digits after rounding to 0 places: two more than the number itself has.
    EXPECT_EQ(rendering::percent(most, Locale::kUSA, 0).size(), 1U + 323 + 107 + 1);
    EXPECT_EQ(rendering::number(vel::Decimal::ofDouble(std::numeric_limits<double>::max(), 64), Locale::kUSA).size(),
              309U + 102 + 1 + 64);
}

}  // namespace
