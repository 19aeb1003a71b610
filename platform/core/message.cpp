#include "vel/core/message.h"

#include <algorithm>

namespace vel {

namespace {

constexpr std::wstring_view kParamStart = L"<velm:param insert=\"";
constexpr std::wstring_view kParamEnd = L"\"/>";
constexpr std::size_t kMaxInsertDigits = 4;

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// The number at the front of `text`; `length` receives its digits, 0 when there is none.
unsigned readInsertNumber(std::wstring_view text, std::size_t& length)
{
    unsigned number = 0;
    length = 0;
    while (length < text.size() && length < kMaxInsertDigits && isDigit(text[length])) {
        number = number * 10 + static_cast<unsigned>(text[length] - L'0');
        ++length;
    }
    return number;
}

using message_details::PatternToken;

PatternToken percentToken(std::wstring_view pattern)
{
    if (pattern.size() > 1 && pattern[1] == L'%') {
        return {PatternToken::kPercent, 0, 2};
    }
    std::size_t digits = 0;
    const unsigned number = readInsertNumber(pattern.substr(1), digits);
    return digits == 0 ? PatternToken{PatternToken::kPlain, 0, 1}
                       : PatternToken{PatternToken::kInsert, number, 1 + digits};
}

PatternToken elementToken(std::wstring_view pattern)
{
    if (pattern.starts_with(kParamStart)) {
        std::size_t digits = 0;
        const unsigned number = readInsertNumber(pattern.substr(kParamStart.size()), digits);
        const std::size_t end = kParamStart.size() + digits;
        if (digits > 0 && pattern.substr(end).starts_with(kParamEnd)) {
            return {PatternToken::kInsert, number, end + kParamEnd.size()};
        }
    }
    return {PatternToken::kPlain, 0, 1};
}

}  // namespace

message_details::PatternToken message_details::nextToken(std::wstring_view pattern) noexcept
{
    if (pattern.front() == L'%') {
        return percentToken(pattern);
    }
    if (pattern.front() == L'<') {
        return elementToken(pattern);
    }
    return {PatternToken::kPlain, 0, std::min(pattern.find_first_of(L"%<"), pattern.size())};
}

Message::Message(String keyOrText, bool external) : m_sKeyOrText(std::move(keyOrText)), m_bExternal(external)
{}

Message::Message(const Message&) = default;
Message::Message(Message&&) noexcept = default;
Message& Message::operator=(const Message&) = default;
Message& Message::operator=(Message&&) noexcept = default;
Message::~Message() = default;

Message Message::text(String text)
{
    return Message(std::move(text), false);
}

Message Message::external(String key)
{
    return Message(std::move(key), true);
}

Message& Message::insert(unsigned number, Message value) &
{
    for (Insert& each : m_tInserts) {
        if (each.m_nNumber == number) {
            each.m_tValue = std::move(value);
            return *this;
        }
    }
    m_tInserts.push_back({number, std::move(value)});
    return *this;
}

Message&& Message::insert(unsigned number, Message value) &&
{
    return std::move(insert(number, std::move(value)));
}

Message& Message::insert(unsigned number, const String& value) &
{
    return insert(number, text(value));
}

Message&& Message::insert(unsigned number, const String& value) &&
{
    return std::move(insert(number, text(value)));
}

const Message* Message::findInsert(unsigned number) const noexcept
{
    for (const Insert& each : m_tInserts) {
        if (each.m_nNumber == number) {
            return &each.m_tValue;
        }
    }
    return nullptr;
}

String Message::toString() const
{
    std::wstring out;
    if (m_bExternal) {
        out = m_sKeyOrText.standard();
        for (const Insert& each : m_tInserts) {
            out.append(&each == &m_tInserts.front() ? L"(" : L", ").append(each.m_tValue.toString().view());
        }
        out.append(m_tInserts.empty() ? L"" : L")");
        return String(std::move(out));
    }
    if (isPlainText()) {
        return m_sKeyOrText;
    }
    String value;
    const auto lookUp = [&](unsigned number) -> const String* {
        const Message* found = findInsert(number);
        if (found == nullptr || found->isPlainText()) {
            return found == nullptr ? nullptr : &found->keyOrText();
        }
        value = found->toString();
        return &value;
    };
    fillInserts(m_sKeyOrText.view(), lookUp, out);
    return String(std::move(out));
}

bool operator==(const Message& a, const Message& b) noexcept
{
    const auto sameInsert = [](const Message::Insert& x, const Message::Insert& y) {
        return x.m_nNumber == y.m_nNumber && x.m_tValue == y.m_tValue;
    };
    return a.m_bExternal == b.m_bExternal && a.m_sKeyOrText == b.m_sKeyOrText &&
           std::equal(a.m_tInserts.begin(), a.m_tInserts.end(), b.m_tInserts.begin(), b.m_tInserts.end(), sameInsert);
}

}  // namespace vel
