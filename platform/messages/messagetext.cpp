#include "messagetext.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vel::messages_details {

namespace {

constexpr std::size_t kMaxInsertDigits = 4;  // what a pattern's insert may have

bool isInsertNumber(std::wstring_view text) noexcept
{
    return !text.empty() && text.size() <= kMaxInsertDigits &&
           std::all_of(text.begin(), text.end(), [](wchar_t each) { return each >= L'0' && each <= L'9'; });
}

/// Walks over an element's descendants in the order of their start tags.
class Descendants
{
public:
    explicit Descendants(const XmlElement& root) { m_tNext.push_back(root.firstChild()); }

    /// The next one, or null.
    const XmlElement* next()
    {
        while (!m_tNext.empty() && m_tNext.back() == nullptr) {
            m_tNext.pop_back();
        }
        if (m_tNext.empty()) {
            return nullptr;
        }
        const XmlElement* element = m_tNext.back();
        m_tNext.back() = element->nextSibling();
        m_tNext.push_back(element->firstChild());
        return element;
    }

private:
    std::vector<const XmlElement*> m_tNext;  // one for each level, null where a level is done
};

/// The length of the tag at the front; a ">" in an attribute's value does not end it.
std::size_t tagLength(std::wstring_view xml) noexcept
{
    wchar_t quote = 0;
    for (std::size_t i = 0; i < xml.size(); ++i) {
        const wchar_t character = xml[i];
        if (quote != 0) {
            quote = character == quote ? L'\0' : quote;
        } else if (character == L'"' || character == L'\'') {
            quote = character;
        } else if (character == L'>') {
            return i + 1;
        }
    }
    return xml.size();
}

void appendInsert(const XmlElement* element, std::wstring& out)
{
    if (element == nullptr || element->name() != L"param" || !isInsertNumber(element->attribute(L"insert"))) {
        return;
    }
    out.append(L"<velm:param insert=\"").append(element->attribute(L"insert")).append(L"\"/>");
}

/// The character of a reference without its "&" and ";", such as "lt" or "#xD".
wchar_t referencedCharacter(std::wstring_view name)
{
    if (name.starts_with(L"#")) {
        const bool hexadecimal = name.starts_with(L"#x");
        return static_cast<wchar_t>(
            std::stoul(std::wstring(name.substr(hexadecimal ? 2 : 1)), nullptr, hexadecimal ? 16 : 10));
    }
    return name == L"lt" ? L'<' : name == L"gt" ? L'>' : name == L"amp" ? L'&' : name == L"quot" ? L'"' : L'\'';
}

/// Appends character data, its references replaced.
void appendUnescaped(std::wstring_view data, std::wstring& out)
{
    while (!data.empty()) {
        const std::size_t plain = std::min(data.find(L'&'), data.size());
        out.append(data.substr(0, plain));
        data.remove_prefix(plain);
        const std::size_t end = data.find(L';');
        if (data.empty() || end == std::wstring_view::npos) {
            return;
        }
        out.push_back(referencedCharacter(data.substr(1, end - 1)));
        data.remove_prefix(end + 1);
    }
}

/// The text of mixed content. The element tree gives text and children apart, its written form gives their order: the
/// two are walked together, each start tag being the next descendant's.
String mixedText(const XmlElement& message)
{
    const String written = message.toXmlText();
    std::wstring_view rest = written.view();
    rest.remove_prefix(tagLength(rest));
    Descendants descendants(message);
    std::wstring out;
    while (!rest.empty()) {
        const std::size_t tag = std::min(rest.find(L'<'), rest.size());
        appendUnescaped(rest.substr(0, tag), out);
        rest.remove_prefix(tag);
        if (!rest.empty() && !rest.starts_with(L"</")) {
            appendInsert(descendants.next(), out);
        }
        rest.remove_prefix(tagLength(rest));
    }
    return String(std::move(out));
}

}  // namespace

std::optional<String> referencedKey(const XmlElement& message)
{
    const XmlElement* child = message.firstChild();
    if (child == nullptr || child->nextSibling() != nullptr || child->name() != L"ref" ||
        child->attribute(L"key").empty() || !String::trim(message.innerText()).empty()) {
        return std::nullopt;
    }
    return String(child->attribute(L"key"));
}

String messageText(const XmlElement& message)
{
    if (message.firstChild() != nullptr) {
        return mixedText(message);
    }
    std::wstring_view text;
    return message.innerTextView(text) ? String(text) : message.innerText();
}

}  // namespace vel::messages_details
