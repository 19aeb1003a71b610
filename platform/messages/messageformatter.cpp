#include "vel/messages/messageformatter.h"

#include <string>
#include <utility>

namespace vel {

MessageFormatter::MessageFormatter(Handle<const MessageTable> table) : m_hTable(std::move(table))
{}

String MessageFormatter::format(const Message& message) const
{
    if (!message.isExternal()) {
        return message.isPlainText() ? message.keyOrText() : fill(message.keyOrText(), message);
    }
    const String* pattern = m_hTable.isNull() ? nullptr : m_hTable->findText(message.keyOrText());
    return pattern == nullptr ? describeKey(message) : fill(*pattern, message);
}

String MessageFormatter::fill(const String& pattern, const Message& message) const
{
    std::wstring out;
    out.reserve(pattern.length());  // an insert is rarely longer than the element that stands for it
    String value;
    const auto lookUp = [&](unsigned number) -> const String* {
        const Message* insert = message.findInsert(number);
        if (insert == nullptr || insert->isPlainText()) {
            return insert == nullptr ? nullptr : &insert->keyOrText();
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
