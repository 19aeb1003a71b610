#include "vel/messages/messagetable.h"

#include <optional>
#include <utility>

#include "messagetext.h"
#include "vel/xml/xmldocument.h"

namespace vel {

MessageTable::MessageTable(String language) : m_sLanguage(std::move(language))
{}

MessageTable::~MessageTable() = default;

void MessageTable::load(const FilePath& file)
{
    load(XmlDocument::load(file));
}

void MessageTable::load(const XmlDocument& document)
{
    std::unordered_map<String, Entry> loaded;
    for (const XmlElement& element : children(document.root())) {
        const std::wstring_view key = element.attribute(L"key");
        if (element.name() != L"message" || key.empty()) {
            continue;
        }
        std::optional<String> target = messages_details::referencedKey(element);
        const bool reference = target.has_value();
        String text = reference ? std::move(*target) : messages_details::messageText(element);
        loaded.insert_or_assign(String(key), Entry{std::move(text), reference});
    }
    // With room for all, merging only relinks: nothing can fail half-way.
    loaded.reserve(loaded.size() + m_tMessages.size());
    loaded.merge(m_tMessages);
    m_tMessages.swap(loaded);
}

void MessageTable::set(const String& key, const String& text)
{
    m_tMessages.insert_or_assign(key, Entry{text, false});
}

void MessageTable::setReference(const String& key, const String& target)
{
    m_tMessages.insert_or_assign(key, Entry{target, true});
}

const String* MessageTable::findText(const String& key) const noexcept
{
    auto found = m_tMessages.find(key);
    // More steps than there are messages: a circle.
    for (std::size_t steps = 0; found != m_tMessages.end() && steps < m_tMessages.size(); ++steps) {
        if (!found->second.m_bReference) {
            return &found->second.m_sText;
        }
        found = m_tMessages.find(found->second.m_sText);
    }
    return nullptr;
}

GDVariant MessageTable::lookUp(const String& key) const
{
    const String* text = findText(key);
    return text == nullptr ? GDVariant() : GDVariant::message(Message::text(*text));
}

GDVariant MessageTable::resolveReferences(const GDVariant& value) const
{
    const Message* message = value.asMessage();
    if (message == nullptr || !message->isExternal()) {
        return value;
    }
    const String* text = findText(message->keyOrText());
    if (text == nullptr) {
        return {};
    }
    Message resolved = Message::text(*text);
    for (const Message::Insert& each : message->inserts()) {
        const GDVariant insert = resolveReferences(GDVariant::message(each.m_tValue));
        resolved.insert(each.m_nNumber, insert.asMessage() == nullptr ? each.m_tValue : *insert.asMessage());
    }
    return GDVariant::message(std::move(resolved));
}

}  // namespace vel
