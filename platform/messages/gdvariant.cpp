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

GDPrimitiveType typeOf(const Message& message) noexcept
{
    return message.isPlainText() ? kTypeString : kTypeNonPrimitive;
}

}  // namespace

GDValue::GDValue(String text) : m_tContent(std::move(text))
{}

GDValue::GDValue(Message message) : m_tContent(std::move(message))
{}

GDValue::~GDValue() = default;

GDPrimitiveType GDValue::primitiveType() const noexcept
{
    const Message* message = asMessage();
    return message == nullptr ? kTypeString : typeOf(*message);
}

String GDValue::toString() const
{
    const Message* message = asMessage();
    return message == nullptr ? std::get<String>(m_tContent) : message->toString();
}

GDPrimitiveType GDVariantBase::primitiveType() const noexcept
{
    if (const auto* value = std::get_if<Handle<const GDValue>>(&m_tContent); value != nullptr) {
        return value->get()->primitiveType();
    }
    if (const Message* message = asMessage(); message != nullptr) {
        return typeOf(*message);
    }
    if (std::holds_alternative<bool>(m_tContent)) {
        return kTypeBoolean;
    }
    if (std::holds_alternative<double>(m_tContent)) {
        return kTypeNumber;
    }
    return std::holds_alternative<Null>(m_tContent) ? kTypeNull : kTypeUndefined;
}

String GDVariantBase::toString() const
{
    if (const auto* value = std::get_if<Handle<const GDValue>>(&m_tContent); value != nullptr) {
        return value->get()->toString();
    }
    if (const Message* message = asMessage(); message != nullptr) {
        return message->toString();
    }
    if (const bool* flag = std::get_if<bool>(&m_tContent); flag != nullptr) {
        return *flag ? L"true" : L"false";
    }
    const double* number = std::get_if<double>(&m_tContent);
    return number == nullptr ? String() : numberText(*number);
}

bool GDVariantBase::isEqual(const GDVariantBase& other) const noexcept
{
    const auto* mine = std::get_if<Handle<const GDValue>>(&m_tContent);
    const auto* theirs = std::get_if<Handle<const GDValue>>(&other.m_tContent);
    if (mine != nullptr && theirs != nullptr) {
        return *mine->get() == *theirs->get();
    }
    return m_tContent == other.m_tContent;
}

}  // namespace vel
