#include "vel/messages/messageformatter.h"

#include <utility>

namespace vel {

namespace {

constexpr std::size_t kUsualLength = 255;

}  // namespace

MessageFormatter::MessageFormatter(Handle<const MessageTable> table) : m_hTable(std::move(table))
{}

String MessageFormatter::format(const Message& message) const
{
    if (message.isPlainText()) {
        return String(message.plainText());
    }
    StringBuffer<kUsualLength> out;
    format(message, out);
    return out.toString();
}

void MessageFormatter::format(const Message& message, StringBufferBase& out) const
{
    if (message.isPlainText()) {
        out.append(message.plainText());
        return;
    }
    if (!message.isExternal()) {
        fill(message, message, out);
        return;
    }
    const Message* const pattern = m_hTable.isNull() ? nullptr : m_hTable.get()->find(message);
    if (pattern == nullptr) {
        describeKey(message, out);
    } else {
        fill(*pattern, message, out);
    }
}

void MessageFormatter::fill(const Message& pattern, const Message& message, StringBufferBase& out) const
{
    pattern.fillPattern(
        message, [&](std::wstring_view text) { out.append(text); },
        [&](const Message& insert) { format(insert, out); });
}

void MessageFormatter::describeKey(const Message& message, StringBufferBase& out) const
{
    out.append(message.keyOrText().view());
    const wchar_t* separator = L"(";
    for (const Message::Insert& each : message.inserts()) {
        out.append(separator);
        format(each.m_tValue, out);
        separator = L", ";
    }
    if (!message.inserts().empty()) {
        out.append(L')');
    }
}

}  // namespace vel
