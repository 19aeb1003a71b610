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

/// Appends the insert that the element stands for, if it is one.
void appendInsert(const XmlElement& element, std::wstring& out)
{
    if (element.name() == L"param" && isInsertNumber(element.attribute(L"insert"))) {
        out.append(L"<velm:param insert=\"").append(element.attribute(L"insert")).append(L"\"/>");
    }
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
    // Every element's text is a piece of the same run of characters: what stands before a descendant ends where the
    // descendant's own text begins.
    std::wstring_view rest = message.innerTextView();
    std::wstring out;
    Descendants descendants(message);
    while (const XmlElement* element = descendants.next()) {
        const std::size_t before = static_cast<std::size_t>(element->innerTextView().data() - rest.data());
        out.append(rest.substr(0, before));
        rest.remove_prefix(before);
        appendInsert(*element, out);
    }
    return String(std::move(out.append(rest)));
}

}  // namespace vel::messages_details
