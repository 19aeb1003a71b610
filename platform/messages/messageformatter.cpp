#include "vel/messages/messageformatter.h"

#include <string>
#include <utility>

namespace vel {

MessageFormatter::MessageFormatter(Handle<const MessageTable> table) : m_hTable(std::move(table))
{}

String MessageFormatter::format(const Message& message) const
{
    if (!message.isExternal()) {
        return message.inserts().empty() ? message.keyOrText() : fill(message.keyOrText(), message);
    }
    const GDVariant found = m_hTable.isNull() ? GDVariant() : m_hTable->lookUp(message.keyOrText());
    return found.asMessage() == nullptr ? describeKey(message) : fill(found.asMessage()->keyOrText(), message);
}

String MessageFormatter::fill(const String& pattern, const Message& message) const
{
    std::wstring out;
    String value;
    const auto lookUp = [&](unsigned number) -> const String* {
        const Message* insert = message.findInsert(number);
        if (insert == nullptr) {
            return nullptr;
        }
        value = format(*insert);
        return &value;
    };
    fillInserts(pattern.view(), lookUp, out);
    return String(std::move(out));
}

String MessageFormatter::describeKey(const Message& message) const
{
    String out = message.keyOrText();
    const wchar_t* separator = L"(";
    for (const Message::Insert& each : message.inserts()) {
        out.append(separator).append(format(each.m_tValue).view());
        separator = L", ";
    }
    return message.inserts().empty() ? out : out.append(L')');
}

}  // namespace vel
