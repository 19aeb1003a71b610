#include <gtest/gtest.h>
#include <locale.h>

#include "datestesting.h"

// What is a letter is asked of the C library, so the calling thread's character type decides which scripts' markers are
// found.

namespace {

using datestesting::describe;
using vel::Locale;
using vel::ParseDateTime;

/// Another character type for the calling thread.
class ThreadCharacterType
{
public:
    explicit ThreadCharacterType(const char* name) : m_tLocale(newlocale(LC_CTYPE_MASK, name, nullptr))
    {
        m_tBefore = uselocale(m_tLocale);
    }
    ~ThreadCharacterType()
    {
        uselocale(m_tBefore);
        freelocale(m_tLocale);
    }
    ThreadCharacterType(const ThreadCharacterType&) = delete;
    ThreadCharacterType& operator=(const ThreadCharacterType&) = delete;

private:
    locale_t m_tLocale;
    locale_t m_tBefore;
};

std::string readTime(std::wstring_view text, const wchar_t* am, const wchar_t* pm)
{
    const Locale locale = datestesting::makeLocale({Locale::kDMY, am, pm, L":", L"/"});
    const datestesting::Parsed parsed = datestesting::parseTyped(text, locale, ParseDateTime::kTime);
    return describe(parsed.m_nFound, parsed.m_tValue);
}

TEST(CharacterTypeC, MarkersThatBeginOutsideAsciiAreNotFound)
{
    const ThreadCharacterType plain("C");
    EXPECT_EQ(readTime(L"3:15 오후", L"오전", L"오후"), "h3 m15");
    EXPECT_EQ(readTime(L"3:15 μ.μ.", L"π.μ.", L"μ.μ."), "h3 m15");
    EXPECT_EQ(readTime(L"3:15 ÖS", L"ÖÖ", L"ÖS"), "h3 m15");
    EXPECT_EQ(readTime(L"3:15 \x1E907\x1E90E", L"\x1E900\x1E90E", L"\x1E907\x1E90E"), "h3 m15");
}

TEST(CharacterTypeC, MarkersThatBeginInAsciiAreFound)
{
    const ThreadCharacterType plain("C");
    EXPECT_EQ(readTime(L"3:15 pm", L"AM", L"PM"), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 p. m.", L"a. m.", L"p. m."), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 poä", L"doä", L"POÄ"), "h15 m15") << "comparing does not ask for letters";
}

TEST(CharacterTypeUtf8, MarkersOfEveryScriptAreFound)
{
    EXPECT_EQ(readTime(L"3:15 오후", L"오전", L"오후"), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 Μ.μ.", L"π.μ.", L"μ.μ."), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 ös", L"ÖÖ", L"ÖS"), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 \x1E907\x1E90E", L"\x1E900\x1E90E", L"\x1E907\x1E90E"), "h15 m15");
}

}  // namespace
