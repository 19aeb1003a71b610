#pragma once

#include <cstdint>

#include "vel/core/exception.h"
#include "vel/core/string.h"

namespace vel {

/// A document that cannot be read: missing, unreadable, wrongly encoded, not well-formed, or over a limit. The message
/// reads "file:line:column: error: what and how to mend it"; line and column are 0 where the fault has no place in it.
class WEBI18N_API XmlException : public Exception
{
public:
    XmlException(const String& file, std::uint32_t line, std::uint32_t column, const String& problem);
    ~XmlException() override;

    /// As given to the loader; "(text)" for a document in memory.
    const String& file() const noexcept { return m_sFile; }
    /// From 1; 0 when the fault has no place.
    std::uint32_t line() const noexcept { return m_nLine; }
    /// In characters, from 1; 0 when the fault has no place.
    std::uint32_t column() const noexcept { return m_nColumn; }
    /// The text after "error: ".
    const String& problem() const noexcept { return m_sProblem; }

private:
    String m_sFile;
    String m_sProblem;
    std::uint32_t m_nLine;
    std::uint32_t m_nColumn;
};

}  // namespace vel
