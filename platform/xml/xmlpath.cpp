#include "vel/xml/xmlpath.h"

#include <algorithm>
#include <string>

#include "vel/core/exception.h"

namespace vel {

namespace {

bool isNameStart(wchar_t character) noexcept
{
    const bool isLetter = (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z');
    return isLetter || character == L'_' || (character >= 0x80 && !isWhiteSpace(character));
}

bool isNameCharacter(wchar_t character) noexcept
{
    return isNameStart(character) || (character >= L'0' && character <= L'9') || character == L'-' || character == L'.';
}

/// Reads a path from front to back.
class PathReader
{
public:
    explicit PathReader(std::wstring_view text) noexcept : m_sText(text) {}

    std::vector<XmlPath::Step> read()
    {
        std::vector<XmlPath::Step> steps;
        do {
            steps.push_back(readStep());
        } while (skip(L'/'));
        if (m_nAt != m_sText.size()) {
            fail(L"\"/\", \"[\" or the end");
        }
        return steps;
    }

private:
    XmlPath::Step readStep()
    {
        XmlPath::Step step;
        step.m_sName = readName();
        while (skip(L'[')) {
            step.m_tPredicates.push_back(readPredicate());
        }
        return step;
    }
    XmlPath::Predicate readPredicate()
    {
        XmlPath::Predicate predicate;
        expect(L'@', L"\"@\"");
        predicate.m_sAttribute = readName();
        expect(L'=', L"\"=\"");
        predicate.m_sValue = readQuoted();
        expect(L']', L"\"]\"");
        return predicate;
    }
    String readName()
    {
        const std::size_t start = m_nAt;
        if (m_nAt == m_sText.size() || !isNameStart(m_sText[m_nAt])) {
            fail(L"a name (without prefix)");
        }
        while (m_nAt < m_sText.size() && isNameCharacter(m_sText[m_nAt])) {
            ++m_nAt;
        }
        return String(m_sText.substr(start, m_nAt - start));
    }
    String readQuoted()
    {
        const wchar_t quote = skip(L'"') ? L'"' : L'\'';
        if (quote == L'\'') {
            expect(quote, L"a value in quotes");
        }
        const std::size_t start = m_nAt;
        m_nAt = std::min(m_sText.find(quote, start), m_sText.size());
        expect(quote, L"the closing quote");
        return String(m_sText.substr(start, m_nAt - 1 - start));
    }
    bool skip(wchar_t character) noexcept
    {
        const bool isThere = m_nAt < m_sText.size() && m_sText[m_nAt] == character;
        m_nAt += isThere ? 1 : 0;
        return isThere;
    }
    void expect(wchar_t character, const wchar_t* description)
    {
        if (!skip(character)) {
            fail(description);
        }
    }
    [[noreturn]] void fail(const wchar_t* expected) const
    {
        throw Exception(Message::text(L"Not an element path: %1 expected at offset %2.")
                            .insert(1, String(expected))
                            .insert(2, decimalString(m_nAt)));
    }

    std::wstring_view m_sText;
    std::size_t m_nAt = 0;
};

}  // namespace

XmlPath::XmlPath(std::wstring_view text) : m_tSteps(PathReader(text).read())
{}

}  // namespace vel
