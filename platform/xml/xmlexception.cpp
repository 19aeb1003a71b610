#include "vel/xml/xmlexception.h"

namespace vel {

namespace {

Message describe(const String& file, std::uint32_t line, std::uint32_t column, const String& problem)
{
    return Message::text(L"%1:%2:%3: error: %4")
        .insert(1, file)
        .insert(2, decimalString(line))
        .insert(3, decimalString(column))
        .insert(4, problem);
}

}  // namespace

XmlException::XmlException(const String& file, std::uint32_t line, std::uint32_t column, const String& problem)
    : Exception(describe(file, line, column, problem)),
      m_sFile(file),
      m_sProblem(problem),
      m_nLine(line),
      m_nColumn(column)
{}

XmlException::~XmlException() = default;

}  // namespace vel
