#pragma once

#include <string>
#include <vector>

namespace datestesting {

/// A row of a case file: its columns, and "file:line" to print when it fails.
struct CaseRow
{
    std::string m_sPlace;
    std::vector<std::string> m_vColumns;
};

/// The rows of a file: columns separated by "|" and trimmed; empty lines and lines that begin with "#" are left out.
/// Throws std::runtime_error for a file that cannot be read.
std::vector<CaseRow> readCases(const std::string& file);

/// The text between the quotes of a column: UTF-8, with \t \n \r \0 \\ and \x{hexadecimal}. Throws std::runtime_error
/// for anything else.
std::wstring quotedText(const CaseRow& row, const std::string& column);

}  // namespace datestesting
