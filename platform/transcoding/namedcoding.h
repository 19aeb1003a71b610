#pragma once

#include <string>

#include "codec.h"
#include "icuconverter.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"

namespace vel::transcoding_details {

/// A spelling of a character set's name with what it stands for. Immutable.
class NamedCoding final : public RefCounted
{
public:
    NamedCoding(String name, std::string icuName, Handle<const Codec> codec, ConverterTraits traits);
    ~NamedCoding() override;

    const String& name() const noexcept { return m_sName; }
    const String& canonicalName() const noexcept { return m_sCanonical; }
    const std::string& icuName() const noexcept { return m_sIcuName; }
    /// Null for a set that goes through ICU's converter.
    const Codec* codec() const noexcept { return m_hCodec.get(); }

    /// For a set that goes through ICU's converter.
    ConverterTraits converterTraits() const noexcept { return m_tTraits; }

    /// Finds the set of a name or alias, building its table when it is the first use of the set; null when there is
    /// none. Any thread. Throws std::bad_alloc; nothing has changed then.
    static Handle<const NamedCoding> find(const String& name);
    /// Whether there is a set of that name or alias.
    static bool exists(const String& name);

private:
    String m_sName;
    String m_sCanonical;
    std::string m_sIcuName;
    Handle<const Codec> m_hCodec;
    ConverterTraits m_tTraits;
};

}  // namespace vel::transcoding_details
