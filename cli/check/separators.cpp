#include "check/separators.h"

#include <cstdio>

#include "text.h"

namespace cli {

namespace {

struct LookAlike
{
    wchar_t m_cCharacter;
    const char* m_pName;
    const char* m_pInstead;
};

constexpr const char* ksBlank = "a blank";
constexpr const char* ksApostrophe = "the apostrophe '";
constexpr const char* ksComma = "the comma ,";
constexpr const char* ksStop = "the full stop .";
constexpr const char* ksSemicolon = "the semicolon ;";
constexpr const char* ksColon = "the colon :";
constexpr const char* ksSlash = "the slash /";
constexpr const char* ksHyphen = "the hyphen -";

constexpr LookAlike kLookAlikes[] = {
    {0x00A0, "no-break space", ksBlank},
    {0x00B4, "acute accent", ksApostrophe},
    {0x00B7, "middle dot", ksStop},
    {0x02B9, "modifier letter prime", ksApostrophe},
    {0x02BC, "modifier letter apostrophe", ksApostrophe},
    {0x060C, "Arabic comma", ksComma},
    {0x060D, "Arabic date separator", ksSlash},
    {0x061B, "Arabic semicolon", ksSemicolon},
    {0x066B, "Arabic decimal separator", ksComma},
    {0x066C, "Arabic thousands separator", ksApostrophe},
    {0x1680, "ogham space mark", ksBlank},
    {0x2002, "en space", ksBlank},
    {0x2003, "em space", ksBlank},
    {0x2004, "three-per-em space", ksBlank},
    {0x2005, "four-per-em space", ksBlank},
    {0x2006, "six-per-em space", ksBlank},
    {0x2007, "figure space", ksBlank},
    {0x2008, "punctuation space", ksBlank},
    {0x2009, "thin space", ksBlank},
    {0x200A, "hair space", ksBlank},
    {0x2010, "hyphen", ksHyphen},
    {0x2011, "non-breaking hyphen", ksHyphen},
    {0x2012, "figure dash", ksHyphen},
    {0x2013, "en dash", ksHyphen},
    {0x2014, "em dash", ksHyphen},
    {0x2018, "left single quotation mark", ksApostrophe},
    {0x2019, "typographic apostrophe", ksApostrophe},
    {0x201A, "low quotation mark", ksComma},
    {0x201B, "reversed quotation mark", ksApostrophe},
    {0x2024, "one dot leader", ksStop},
    {0x202F, "narrow no-break space", ksBlank},
    {0x2032, "prime", ksApostrophe},
    {0x2044, "fraction slash", ksSlash},
    {0x205F, "medium mathematical space", ksBlank},
    {0x2212, "minus sign", ksHyphen},
    {0x2215, "division slash", ksSlash},
    {0x2236, "ratio", ksColon},
    {0x3000, "ideographic space", ksBlank},
    {0x3001, "ideographic comma", ksComma},
    {0x3002, "ideographic full stop", ksStop},
    {0xFF07, "fullwidth apostrophe", ksApostrophe},
    {0xFF0C, "fullwidth comma", ksComma},
    {0xFF0D, "fullwidth hyphen", ksHyphen},
    {0xFF0E, "fullwidth full stop", ksStop},
    {0xFF0F, "fullwidth slash", ksSlash},
    {0xFF1A, "fullwidth colon", ksColon},
    {0xFF1B, "fullwidth semicolon", ksSemicolon},
};

const LookAlike* findLookAlike(wchar_t character) noexcept
{
    for (const LookAlike& each : kLookAlikes) {
        if (each.m_cCharacter == character) {
            return &each;
        }
    }
    return nullptr;
}

std::string describe(std::wstring_view name, const LookAlike& found)
{
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(found.m_cCharacter));
    return utf8Text(name) + " holds " + code + " (" + found.m_pName + "), which nobody types: write " +
           found.m_pInstead;
}

}  // namespace

std::optional<Problem> checkSeparator(std::wstring_view name, std::wstring_view text)
{
    for (const wchar_t character : text) {
        if (const LookAlike* found = findLookAlike(character)) {
            return Problem{kWarning, "look-alike-separator", describe(name, *found)};
        }
        if (character == L'\n' || character == L'\r' || character == L'\t') {
            return Problem{kWarning, "white-space",
                           utf8Text(name) + " holds a line feed or tab, which belongs to the separator: write " +
                               "the separator right between the tags"};
        }
    }
    return std::nullopt;
}

}  // namespace cli
