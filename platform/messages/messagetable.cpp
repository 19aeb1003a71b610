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
    Messages loaded;
    for (const XmlElement& element : children(document.root())) {
        const std::wstring_view key = element.attribute(L"key");
        if (element.name() != L"message" || key.empty()) {
            continue;
        }
        std::optional<String> target = messages_details::referencedKey(element);
        loaded.insert_or_assign(String(key), target ? Message::external(std::move(*target))
                                                    : Message::text(messages_details::messageText(element)));
    }
    // With room for all, merging only relinks: nothing can fail half-way.
    loaded.reserve(loaded.size() + m_tMessages.size());
    loaded.merge(m_tMessages);
    m_tMessages.swap(loaded);
}

void MessageTable::set(const String& key, const String& text)
{
    m_tMessages.insert_or_assign(key, Message::text(text));
}

void MessageTable::setReference(const String& key, const String& target)
{
    m_tMessages.insert_or_assign(key, Message::external(target));
}

const Message* MessageTable::find(std::wstring_view key) const noexcept
{
    return find(HashedKey{key, hashText(key)});
}

const Message* MessageTable::find(const Message& external) const noexcept
{
    return find(HashedKey{external.keyOrText().view(), external.hash()});
}

const Message* MessageTable::find(const HashedKey& key) const noexcept
{
    auto found = m_tMessages.find(key);
    // More steps than there are messages: a circle.
    for (std::size_t steps = 0; found != m_tMessages.end() && steps < m_tMessages.size(); ++steps) {
        const Message& message = found->second;
        if (!message.isExternal()) {
            return &message;
        }
        found = m_tMessages.find(HashedKey{message.keyOrText().view(), message.hash()});
    }
    return nullptr;
}

GDVariant MessageTable::lookUp(std::wstring_view key) const
{
    const Message* const found = find(key);
    return found == nullptr ? GDVariant() : GDVariant::message(*found);
}

GDVariant MessageTable::resolveReferences(const GDVariant& value) const
{
    const Message* const message = value.asMessage();
    if (message == nullptr || !message->isExternal()) {
        return value;
    }
    const Message* const text = find(*message);
    if (text == nullptr) {
        return {};
    }
    Message resolved = *text;
    for (const Message::Insert& each : message->inserts()) {
        const GDVariant insert = resolveReferences(GDVariant::message(each.m_tValue));
        resolved.insert(each.m_nNumber, insert.asMessage() == nullptr ? each.m_tValue : *insert.asMessage());
    }
    return GDVariant::message(std::move(resolved));
}

}  // namespace vel
