#include "vel/messages/gdvariant.h"

#include <charconv>
#include <string_view>

namespace vel {

namespace {

String numberText(double value)
{
    char digits[32];  // the shortest form of a double takes at most 24 characters
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value);
    const std::string_view written(digits, static_cast<std::size_t>(result.ptr - digits));
    return String(std::wstring(written.begin(), written.end()));
}

bool isPlainText(const Message& message) noexcept
{
    return !message.isExternal() && message.inserts().empty();
}

}  // namespace

GDVariant GDVariant::null() noexcept
{
    GDVariant variant;
    variant.m_tValue.emplace<Null>();
    return variant;
}

GDVariant GDVariant::boolean(bool value) noexcept
{
    GDVariant variant;
    variant.m_tValue.emplace<bool>(value);
    return variant;
}

GDVariant GDVariant::number(double value) noexcept
{
    GDVariant variant;
    variant.m_tValue.emplace<double>(value);
    return variant;
}

GDVariant GDVariant::string(String value)
{
    GDVariant variant;
    variant.m_tValue.emplace<String>(std::move(value));
    return variant;
}

GDVariant GDVariant::message(Message value)
{
    GDVariant variant;
    variant.m_tValue.emplace<Message>(std::move(value));
    return variant;
}

GDPrimitiveType GDVariant::primitiveType() const noexcept
{
    if (const Message* message = asMessage(); message != nullptr) {
        return isPlainText(*message) ? kTypeString : kTypeNonPrimitive;
    }
    if (std::holds_alternative<String>(m_tValue)) {
        return kTypeString;
    }
    if (std::holds_alternative<bool>(m_tValue)) {
        return kTypeBoolean;
    }
    if (std::holds_alternative<double>(m_tValue)) {
        return kTypeNumber;
    }
    return std::holds_alternative<Null>(m_tValue) ? kTypeNull : kTypeUndefined;
}

bool GDVariant::isUndefinedOrNull() const noexcept
{
    return std::holds_alternative<std::monostate>(m_tValue) || std::holds_alternative<Null>(m_tValue);
}

const Message* GDVariant::asMessage() const noexcept
{
    return std::get_if<Message>(&m_tValue);
}

String GDVariant::toString() const
{
    if (const Message* message = asMessage(); message != nullptr) {
        return message->toString();
    }
    if (const String* text = std::get_if<String>(&m_tValue); text != nullptr) {
        return *text;
    }
    if (const bool* flag = std::get_if<bool>(&m_tValue); flag != nullptr) {
        return *flag ? L"true" : L"false";
    }
    const double* number = std::get_if<double>(&m_tValue);
    return number == nullptr ? String() : numberText(*number);
}

}  // namespace vel
