#include "vel/xml/xmlexception.h"

#include <string>

namespace vel {

namespace {

/// A per-cent sign starts an insert even within the value of one.
String withoutInserts(const String& text)
{
    std::wstring out;
    for (const wchar_t character : text) {
        out.append(character == L'%' ? 2 : 1, character);
    }
    return String(std::move(out));
}

Message describe(const String& file, std::uint32_t line, std::uint32_t column, const String& problem)
{
    return Message::text(L"%1:%2:%3: error: %4")
        .insert(1, withoutInserts(file))
        .insert(2, decimalString(line))
        .insert(3, decimalString(column))
        .insert(4, withoutInserts(problem));
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
