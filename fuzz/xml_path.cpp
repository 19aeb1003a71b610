// The first line is a path, the rest a document. Any path compiles or is refused by Exception; one that compiles can be
// put together from its steps again, and finds what a plain search step by step finds.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "require.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlpath.h"

namespace {

using fuzzing::require;
using vel::XmlDocument;
using vel::XmlElement;
using vel::XmlPath;

constexpr std::string_view kDocument =
    "<r><a b='1'><b c=''/><a b='1'/><a b='2'><a b=\"'\"/></a></a><b/><x:a b='1' c='2'><b c='2'/></x:a><a/></r>";

std::wstring textOf(const XmlPath& path)
{
    std::wstring text;
    for (const XmlPath::Step& step : path.steps()) {
        text.append(text.empty() ? L"" : L"/").append(step.m_sName.view());
        for (const XmlPath::Predicate& predicate : step.m_tPredicates) {
            const wchar_t quote = predicate.m_sValue.find(L'"') == vel::String::kNotFound ? L'"' : L'\'';
            text.append(L"[@").append(predicate.m_sAttribute.view()).append(L"=").push_back(quote);
            text.append(predicate.m_sValue.view()).push_back(quote);
            text.append(L"]");
        }
    }
    return text;
}

bool sameSteps(const XmlPath& a, const XmlPath& b)
{
    return textOf(a) == textOf(b) && a.steps().size() == b.steps().size();
}

bool matches(const XmlElement& element, const XmlPath::Step& step)
{
    for (const XmlPath::Predicate& predicate : step.m_tPredicates) {
        const std::wstring_view name = predicate.m_sAttribute.view();
        if (!element.hasAttribute(name) || element.attribute(name) != predicate.m_sValue.view()) {
            return false;
        }
    }
    return element.name() == step.m_sName.view();
}

std::vector<const XmlElement*> search(const XmlElement& root, const XmlPath& path)
{
    std::vector<const XmlElement*> level{&root};
    for (const XmlPath::Step& step : path.steps()) {
        std::vector<const XmlElement*> next;
        for (const XmlElement* parent : level) {
            for (const XmlElement& child : vel::children(*parent)) {
                if (matches(child, step)) {
                    next.push_back(&child);
                }
            }
        }
        level = std::move(next);
    }
    return level;
}

void checkSelect(const XmlDocument& document, const XmlPath& path)
{
    const std::vector<const XmlElement*> expected = search(document.root(), path);
    for (const std::size_t limit : {XmlElement::kNoLimit, std::size_t{0}, std::size_t{1}, std::size_t{2}}) {
        const auto found = document.root().select(path, limit);
        require(found.size() == std::min(limit, expected.size()));
        for (std::size_t i = 0; i < found.size(); ++i) {
            require(found[i].get() == expected[i]);
        }
    }
}

/// UTF-8, or else each byte as a character.
std::wstring widePath(std::string_view bytes)
{
    if (const auto text = vel::stringFromUtf8(bytes)) {
        return text->standard();
    }
    std::wstring wide;
    for (const char byte : bytes) {
        wide.push_back(static_cast<wchar_t>(static_cast<unsigned char>(byte)));
    }
    return wide;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t lineEnd = std::min(input.find('\n'), input.size());
    const std::string_view rest = input.substr(std::min(lineEnd + 1, input.size()));
    try {
        const XmlPath path(widePath(input.substr(0, lineEnd)));
        require(sameSteps(XmlPath(textOf(path)), path));
        checkSelect(XmlDocument::parse(kDocument), path);
        checkSelect(XmlDocument::parse(rest), path);
    } catch (const vel::Exception& error) {
        require(error.what()[0] != '\0');
    }
    return 0;
}
