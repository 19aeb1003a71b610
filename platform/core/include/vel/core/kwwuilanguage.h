#pragma once

#include <utility>

#include "vel/core/string.h"

namespace vel {

/// The language in which a user reads the interface, as a language tag such as "en" or "pt-BR". The tag is kept as it
/// is written. A value; one object is used by one thread at a time.
class KWWUILanguage
{
public:
    explicit KWWUILanguage(String tag) : m_sTag(std::move(tag)) {}

    /// Valid while this object is neither changed nor destroyed.
    const String& GetTag() const noexcept { return m_sTag; }  // NOLINT(readability-identifier-naming): hosts' spelling

private:
    String m_sTag;
};

}  // namespace vel
