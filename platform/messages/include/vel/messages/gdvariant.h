#pragma once

#include <variant>

#include "vel/core/api.h"
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

/// A generic value: undefined, null, a boolean, a number, a string or a message. A value type; one object is used by
/// one thread at a time.
class WEBI18N_API GDVariant
{
public:
    /// Undefined.
    GDVariant() noexcept = default;

    static GDVariant null() noexcept;
    static GDVariant boolean(bool value) noexcept;
    static GDVariant number(double value) noexcept;
    static GDVariant string(String value);
    /// A text message without inserts is a string to those who look at it as a simple value; every other message is
    /// non-primitive until MessageTable::resolveReferences has resolved it.
    static GDVariant message(Message value);

    GDPrimitiveType primitiveType() const noexcept;
    bool isUndefinedOrNull() const noexcept;

    /// The message, or null when the value is none.
    const Message* asMessage() const noexcept;
    /// The text for people: a string as it is, a message's toString(), "true"/"false", a number in shortest decimal
    /// form; empty for undefined and null.
    String toString() const;

    friend bool operator==(const GDVariant&, const GDVariant&) noexcept = default;

private:
    struct Null
    {
        friend bool operator==(const Null&, const Null&) noexcept = default;
    };
    std::variant<std::monostate, Null, bool, double, String, Message> m_tValue;
};

}  // namespace vel
