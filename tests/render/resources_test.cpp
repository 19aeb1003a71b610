#include <optional>

#include "faileverywhere.h"
#include "failingallocator.h"
#include "memoryfile.h"
#include "printers.h"
#include "rendering.h"
#include "webi18n/currencylookup.h"

// Memory: none in the steady state, and running out of it.

namespace {

using rendering::decimal;
using vel::DateTime;
using vel::Decimal;
using vel::Locale;
using vel::RenderNumber;

const DateTime kMoment{2005, 2, 5, 15, 7, 1, 0};
const wchar_t* const kPicture = L"dddd, d MMMM yyyy 'at' h:mm:ss tt";

vel::Handle<const vel::Currency> dollar()
{
    const testsupport::MemoryFile file;
    const vel::CurrencyLookup lookup(
        file.write("<Currencies><Currency tag=\"USD\" type=\"local\" symbol=\"$\" digits=\"2\"/></Currencies>"));
    return lookup.getCurrencyList().at(0);
}

/// All that a page may render, appended to one buffer.
class Page
{
public:
    explicit Page(const Locale& locale) : m_tLocale(locale) {}

    void render(vel::StringBufferBase& out) const
    {
        m_tPicture.append(kMoment, m_tLocale, out);
        out.append(L'|');
        vel::DatePicture::append(kPicture, kMoment, m_tLocale, out);
        const Decimal number = Decimal::ofText(L"-1234567.891").value();
        out.append(L'|');
        RenderNumber::append(number, m_tLocale, {2, true}, out);
        RenderNumber::append(Decimal::ofDouble(-1234567.891, 3), m_tLocale, {}, out);
        out.append(L'|');
        RenderNumber::appendPercent(number, m_tLocale, {0, true}, out);
        out.append(L'|');
        if (const RenderNumber::ScaleFactor* factor = RenderNumber::findScaleFactor(number, m_tLocale)) {
            RenderNumber::appendScaled(number, *factor, m_tLocale, {1, true}, out);
        }
        out.append(L'|');
        RenderNumber::appendAmount(number, *m_hCurrency, m_tLocale, {}, out);
        RenderNumber::appendAmount(number, *m_hCurrency, m_sTag, m_tLocale, {}, out);
    }

private:
    Locale m_tLocale;
    vel::DatePicture m_tPicture{kPicture};
    vel::Handle<const vel::Currency> m_hCurrency = dollar();
    vel::String m_sTag = L"parens";
};

TEST(Resources, TheSteadyStateAllocatesNothing)
{
    for (const char* const name : {"en-us", "de-de", "ru-ru", "ar-eg", "ja-jp", "th-th"}) {
        const Page page(rendering::packLocale(name));
        vel::StringBuffer<63> out;
        page.render(out);  // the buffer grows once
        const std::size_t length = out.length();
        out.clear();
        const testsupport::AllocationCount before;
        page.render(out);
        const std::size_t allocations = before.value();
        EXPECT_EQ(allocations, 0U) << name;
        EXPECT_EQ(out.length(), length);
        EXPECT_LT(100U, length);
    }
}

/// Small numbers and dates fit into the buffer's own block: nothing is ever allocated.
TEST(Resources, ShortTextsNeedNoMemoryAtAll)
{
    const Locale german = rendering::packLocale("de-de");
    const std::wstring_view picture = german.getInfoView(Locale::kDateLongFormat);
    const testsupport::AllocationCount before;
    vel::StringBuffer<63> out;
    vel::DatePicture::append(picture, kMoment, german, out);
    RenderNumber::append(Decimal::ofInteger(-123456789, 2), german, {}, out);
    const std::size_t allocations = before.value();
    EXPECT_EQ(allocations, 0U);
    EXPECT_EQ(vel::toUtf8Lossy(out.view()), "Samstag, 5. Februar 2005-1.234.567,89");
}

TEST(Resources, CopiesOfAPictureShare)
{
    const vel::DatePicture picture(kPicture);
    const testsupport::AllocationCount before;
    const vel::DatePicture copy(picture);
    vel::DatePicture assigned;
    assigned = copy;
    const std::size_t allocations = before.value();
    EXPECT_EQ(allocations, 0U);
}

/// What was in the buffer stays in front of it, and the same can be rendered afterwards.
TEST(Resources, EveryAllocationMayFail)
{
    const Page page(rendering::packLocale("en-us"));
    vel::StringBuffer<63> complete;
    page.render(complete);
    std::optional<vel::StringBuffer<4>> out;
    const std::ptrdiff_t blocks = testsupport::outstandingBlocks();
    testsupport::failEverywhere(
        [&] {
            out.emplace();
            out->append(L"in ");
            page.render(*out);
            const vel::DatePicture again(kPicture);
            again.append(kMoment, Locale::kUSA, *out);
        },
        [&] {
            const std::wstring_view text = out->view().substr(0, 3 + complete.length());
            EXPECT_EQ(text, (L"in " + std::wstring(complete.view())).substr(0, text.size()));
        });
    EXPECT_EQ(out->view().substr(3, complete.length()), complete.view());
    out.reset();
    EXPECT_EQ(testsupport::outstandingBlocks(), blocks);
}

}  // namespace
