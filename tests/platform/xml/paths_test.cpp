#include "documentsupport.h"
#include "vel/xml/xmlpath.h"

namespace {

using vel::XmlPath;

/// Steps as "name" or "name{attribute=value}{...}", one text each.
std::vector<std::wstring> stepsOf(std::wstring_view text)
{
    std::vector<std::wstring> result;
    const XmlPath path(text);
    for (const XmlPath::Step& step : path.steps()) {
        std::wstring each = step.m_sName.standard();
        for (const XmlPath::Predicate& predicate : step.m_tPredicates) {
            each += L"{" + predicate.m_sAttribute.standard() + L"=" + predicate.m_sValue.standard() + L"}";
        }
        result.push_back(each);
    }
    return result;
}

TEST(XmlPath, ReadsStepsAndPredicates)
{
    using Steps = std::vector<std::wstring>;
    EXPECT_EQ(stepsOf(L"a"), (Steps{L"a"}));
    EXPECT_EQ(stepsOf(L"Currencies/Currency"), (Steps{L"Currencies", L"Currency"}));
    EXPECT_EQ(stepsOf(L"list[@name=\"supported\"]/item"), (Steps{L"list{name=supported}", L"item"}));
    EXPECT_EQ(stepsOf(L"m[@name='x']/choose/when"), (Steps{L"m{name=x}", L"choose", L"when"}));
    EXPECT_EQ(stepsOf(L"a[@b='1'][@c=\"2\"][@b='3']"), (Steps{L"a{b=1}{c=2}{b=3}"}));
    EXPECT_EQ(stepsOf(L"a[@b='']"), (Steps{L"a{b=}"}));
    EXPECT_EQ(stepsOf(L"a[@b='/]\" [@']"), (Steps{L"a{b=/]\" [@}"}));
    EXPECT_EQ(stepsOf(L"a[@b=\"it's\"]"), (Steps{L"a{b=it's}"}));
    EXPECT_EQ(stepsOf(L"_a-1.b/\u00E9\U00010000"), (Steps{L"_a-1.b", L"\u00E9\U00010000"}));
}

struct Row
{
    const wchar_t* m_pText;
    unsigned m_nOffset;
    const char* m_pExpected;
};

class BadPath : public testing::TestWithParam<Row>
{};

TEST_P(BadPath, IsRefusedAtItsOffset)
{
    try {
        XmlPath path(GetParam().m_pText);
        FAIL() << "compiled";
    } catch (const vel::Exception& error) {
        EXPECT_EQ(std::string(error.what()), std::string("Not an element path: ") + GetParam().m_pExpected +
                                                 " expected at offset " + std::to_string(GetParam().m_nOffset) + ".");
    }
}

constexpr const char* kName = "a name (without prefix)";
constexpr const char* kEnd = "\"/\", \"[\" or the end";

INSTANTIATE_TEST_SUITE_P(
    Rows, BadPath,
    testing::Values(Row{L"", 0, kName}, Row{L"/", 0, kName}, Row{L"/a", 0, kName}, Row{L"a/", 2, kName},
                    Row{L"a//b", 2, kName}, Row{L" a", 0, kName}, Row{L"a ", 1, kEnd}, Row{L"a /b", 1, kEnd},
                    Row{L"a/ b", 2, kName}, Row{L"1a", 0, kName}, Row{L"-a", 0, kName}, Row{L".", 0, kName},
                    Row{L"..", 0, kName}, Row{L"*", 0, kName}, Row{L"@a", 0, kName}, Row{L"a:b", 1, kEnd},
                    Row{L"a]", 1, kEnd}, Row{L"a'", 1, kEnd}, Row{L"\u00A0", 0, kName}, Row{L"a\u2003", 1, kEnd},
                    Row{L"a[", 2, "\"@\""}, Row{L"a[b='1']", 2, "\"@\""}, Row{L"a[1]", 2, "\"@\""},
                    Row{L"a[ @b='1']", 2, "\"@\""}, Row{L"a[@", 3, kName}, Row{L"a[@='1']", 3, kName},
                    Row{L"a[@b", 4, "\"=\""}, Row{L"a[@b]", 4, "\"=\""}, Row{L"a[@b ='1']", 4, "\"=\""},
                    Row{L"a[@x:b='1']", 4, "\"=\""}, Row{L"a[@b=", 5, "a value in quotes"},
                    Row{L"a[@b=1]", 5, "a value in quotes"}, Row{L"a[@b= '1']", 5, "a value in quotes"},
                    Row{L"a[@b='1", 7, "the closing quote"}, Row{L"a[@b='1\"]", 9, "the closing quote"},
                    Row{L"a[@b='", 6, "the closing quote"}, Row{L"a[@b='1'", 8, "\"]\""},
                    Row{L"a[@b='1' ]", 8, "\"]\""}, Row{L"a[@b='1']c", 9, kEnd}, Row{L"a[@b='1'] ", 9, kEnd},
                    Row{L"a[@b='1'and@c='2']", 8, "\"]\""}));

TEST(XmlPath, IsAValue)
{
    const XmlPath path(L"a[@b='1']/c");
    XmlPath copy = path;
    EXPECT_EQ(copy.steps().size(), 2U);
    copy = XmlPath(L"z");
    EXPECT_EQ(path.steps()[0].m_sName, L"a");
    EXPECT_EQ(copy.steps()[0].m_sName, L"z");
}

}  // namespace
