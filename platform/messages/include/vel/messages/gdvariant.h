#pragma once

#include <cstddef>
#include <utility>
#include <variant>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/message.h"
#include "vel/core/string.h"

namespace vel {

/// What a generic value is when it is looked at as a simple one.
enum GDPrimitiveType
{
    kTypeString = 0,
    kTypeBoolean = 1,
    kTypeNumber = 2,
    kTypeUndefined = 3,
    kTypeNull = 4,
    kTypeNonPrimitive = 5,
    kTypeEnd_ = 6
};

/// A text or a message as an object that is shared by Handle. Immutable; safe from any thread.
class WEBI18N_API GDValue final : public RefCounted
{
public:
    explicit GDValue(String text);
    explicit GDValue(Message message);
    ~GDValue() override;

    /// A text, and a text message without inserts, are strings; every other message is non-primitive.
    GDPrimitiveType primitiveType() const noexcept;
    /// The message, or null when the value is a text.
    const Message* asMessage() const noexcept { return std::get_if<Message>(&m_tContent); }
    /// The text, or null when the value is a message.
    const String* asText() const noexcept { return std::get_if<String>(&m_tContent); }
    /// The text as it is, or the message's toString().
    String toString() const;

    friend bool operator==(const GDValue& a, const GDValue& b) noexcept { return a.m_tContent == b.m_tContent; }

private:
    std::variant<String, Message> m_tContent;
};

/// A generic value: undefined, null, a boolean, a number, a string or a message. What operations take that read or
/// assign a variant of any size; one object is used by one thread at a time. Copies share texts and messages; a
/// moved-from one can only be assigned to or destroyed.
class WEBI18N_API GDVariantBase
{
public:
    GDPrimitiveType primitiveType() const noexcept;
    bool isUndefinedOrNull() const noexcept
    {
        return std::holds_alternative<std::monostate>(m_tContent) || std::holds_alternative<Null>(m_tContent);
    }

    /// The message, or null when the value is none. Valid while this variant keeps its value.
    const Message* asMessage() const noexcept { return std::get_if<Message>(&m_tContent); }
    /// The text for people: a string as it is, a message's toString(), "true"/"false", a number in shortest decimal
    /// form; empty for undefined and null.
    String toString() const;

    friend bool operator==(const GDVariantBase& a, const GDVariantBase& b) noexcept { return a.isEqual(b); }

protected:
    struct Null
    {
        friend bool operator==(const Null&, const Null&) noexcept = default;
    };
    using Content = std::variant<std::monostate, Null, bool, double, Handle<const GDValue>, Message>;

    GDVariantBase() noexcept = default;
    explicit GDVariantBase(Content content) noexcept : m_tContent(std::move(content)) {}
    GDVariantBase(const GDVariantBase&) noexcept = default;
    GDVariantBase(GDVariantBase&&) noexcept = default;
    ~GDVariantBase() = default;

public:
    GDVariantBase& operator=(const GDVariantBase&) noexcept = default;
    GDVariantBase& operator=(GDVariantBase&&) noexcept = default;

protected:
    static constexpr std::size_t kContentSize = sizeof(Content);

private:
    bool isEqual(const GDVariantBase& other) const noexcept;

    Content m_tContent;
};

/// A variant that takes up to `nBytes` bytes in place; what texts and messages are made of is shared on the heap.
template <std::size_t nBytes>
class GDAdjustableSizeVariant final : public GDVariantBase
{
    static_assert(nBytes >= kContentSize, "the simple values must fit in place");

public:
    /// Undefined.
    GDAdjustableSizeVariant() noexcept = default;
    GDAdjustableSizeVariant(const GDVariantBase& other) noexcept : GDVariantBase(other) {}

    static GDAdjustableSizeVariant null() noexcept { return GDAdjustableSizeVariant(Content(Null())); }
    static GDAdjustableSizeVariant boolean(bool value) noexcept { return GDAdjustableSizeVariant(Content(value)); }
    static GDAdjustableSizeVariant number(double value) noexcept { return GDAdjustableSizeVariant(Content(value)); }
    static GDAdjustableSizeVariant string(String value)
    {
        return GDAdjustableSizeVariant(Content(Handle<const GDValue>(makeHandle<GDValue>(std::move(value)))));
    }
    /// A text message without inserts is a string to those who look at it as a simple value; every other message is
    /// non-primitive until MessageTable::resolveReferences has resolved it.
    static GDAdjustableSizeVariant message(Message value) noexcept
    {
        return GDAdjustableSizeVariant(Content(std::move(value)));
    }

private:
    explicit GDAdjustableSizeVariant(Content content) noexcept : GDVariantBase(std::move(content)) {}
};

/// The size that this system uses.
using GDVariant = GDAdjustableSizeVariant<16>;

}  // namespace vel
