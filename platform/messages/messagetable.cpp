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
    std::vector<std::pair<std::wstring_view, Message>> loaded;
    std::size_t characters = 0;
    for (const XmlElement& element : children(document.root())) {
        const std::wstring_view key = element.attribute(L"key");
        if (element.name() != L"message" || key.empty()) {
            continue;
        }
        std::optional<String> target = messages_details::referencedKey(element);
        loaded.emplace_back(key, target ? Message::external(std::move(*target))
                                        : Message::text(messages_details::messageText(element)));
        characters += key.size();
    }
    // With room for all, nothing can fail half-way.
    m_tKeys.reserve(loaded.size(), characters);
    m_vMessages.reserve(size() + loaded.size());
    for (auto& [key, message] : loaded) {
        put(key, std::move(message));
    }
}

void MessageTable::set(const String& key, const String& text)
{
    put(key.view(), Message::text(text));
}

void MessageTable::setReference(const String& key, const String& target)
{
    put(key.view(), Message::external(target));
}

/// Adds a message or replaces the one of that key. When it throws (memory), nothing has changed.
void MessageTable::put(std::wstring_view key, Message message)
{
    m_tKept.clear();
    if (const std::uint32_t known = m_tKeys.find(key); known != TextNumbers::kNone) {
        m_vMessages[known] = std::move(message);
        return;
    }
    m_tKeys.reserve(1, key.size());
    m_vMessages.push_back(std::move(message));
    m_tKeys.add(key);
}

const Message* MessageTable::find(std::wstring_view key) const noexcept
{
    return followed(m_tKeys.find(key));
}

const Message* MessageTable::find(const Message& external) const noexcept
{
    return followed(numberOf(external));
}

std::uint32_t MessageTable::numberOf(const Message& external) const noexcept
{
    return m_tKeys.find(external.keyOrText().view(), external.hash());
}

/// The text message that the message of that number is, or that its references lead to; null where there is none.
const Message* MessageTable::followed(std::uint32_t number) const noexcept
{
    // More steps than there are messages: a circle.
    for (std::size_t steps = 0; number != TextNumbers::kNone && steps < size(); ++steps) {
        const Message& message = m_vMessages[number];
        if (!message.isExternal()) {
            return &message;
        }
        number = numberOf(message);
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
