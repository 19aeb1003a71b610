#include "vel/messages/messagetable.h"

#include <atomic>
#include <optional>
#include <utility>

#include "messagetext.h"
#include "vel/xml/xmldocument.h"

namespace vel {

namespace {

/// Not followed yet, and being followed. No message has such a number: there are fewer than characters of a file.
constexpr std::uint32_t kUnknown = TextNumbers::kNone - 1;
constexpr std::uint32_t kUnderWay = TextNumbers::kNone - 2;

std::uint64_t newVersion() noexcept
{
    static constinit std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace

MessageTable::MessageTable(String language) : m_sLanguage(std::move(language)), m_nVersion(newVersion())
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
                                        : Message::pattern(messages_details::messageText(element)));
        characters += key.size();
    }
    // With room for all, nothing can fail half-way.
    m_tKeys.reserve(loaded.size(), characters);
    m_vMessages.reserve(size() + loaded.size());
    for (auto& [key, message] : loaded) {
        put(key, std::move(message));
    }
    followReferences();
}

void MessageTable::set(const String& key, const String& text)
{
    put(key.view(), Message::pattern(text));
    followReferences();
}

void MessageTable::setReference(const String& key, const String& target)
{
    put(key.view(), Message::external(target));
    followReferences();
}

/// Adds a message or replaces the one of that key. When it throws (memory), nothing has changed.
void MessageTable::put(std::wstring_view key, Message message)
{
    const std::size_t references = message.isExternal() ? 1 : 0;
    if (const std::uint32_t known = m_tKeys.find(key); known != TextNumbers::kNone) {
        Entry& entry = m_vMessages[known];
        m_nReferences -= entry.m_tMessage.isExternal() ? 1 : 0;
        entry = {std::move(message), known};
    } else {
        m_tKeys.reserve(1, key.size());
        m_vMessages.push_back({std::move(message), static_cast<std::uint32_t>(size())});
        m_tKeys.add(key);
    }
    m_nReferences += references;
}

/// Finds for every message the text that it leads to. Each reference is followed once, however long their chains are.
void MessageTable::followReferences() noexcept
{
    m_nVersion = newVersion();
    if (m_nReferences == 0) {
        return;
    }
    for (Entry& each : m_vMessages) {
        each.m_nFollowed = each.m_tMessage.isExternal() ? kUnknown : each.m_nFollowed;
    }
    for (std::uint32_t number = 0; number < size(); ++number) {
        const std::uint32_t end = endOfReferences(number);
        replaceAlong(number, kUnderWay, end);
    }
}

/// The text that the references from that message on lead to, or kNone; those that were not known are then under way.
std::uint32_t MessageTable::endOfReferences(std::uint32_t number) noexcept
{
    const std::uint32_t end = replaceAlong(number, kUnknown, kUnderWay);
    // One that is under way was passed before: a circle.
    const bool leadsNowhere = end == TextNumbers::kNone || m_vMessages[end].m_nFollowed == kUnderWay;
    return leadsNowhere ? TextNumbers::kNone : m_vMessages[end].m_nFollowed;
}

/// Goes along the references from that message on while they stand at `from`, and sets them to `to`. Result: the first
/// message that stands otherwise, or kNone when there is none of that key.
std::uint32_t MessageTable::replaceAlong(std::uint32_t number, std::uint32_t from, std::uint32_t to) noexcept
{
    while (number != TextNumbers::kNone && m_vMessages[number].m_nFollowed == from) {
        m_vMessages[number].m_nFollowed = to;
        number = numberOf(m_vMessages[number].m_tMessage);
    }
    return number;
}

const Message* MessageTable::find(std::wstring_view key) const noexcept
{
    return textOf(m_tKeys.find(key));
}

const Message* MessageTable::find(const Message& external) const noexcept
{
    return textOf(numberOf(external));
}

std::uint32_t MessageTable::numberOf(const Message& external) const noexcept
{
    return m_tKeys.find(external.keyOrText().view(), external.hash());
}

/// The text message that the message of that number is, or that its references lead to; null where there is none.
const Message* MessageTable::textOf(std::uint32_t number) const noexcept
{
    const std::uint32_t followed = number == TextNumbers::kNone ? number : m_vMessages[number].m_nFollowed;
    return followed == TextNumbers::kNone ? nullptr : &m_vMessages[followed].m_tMessage;
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
