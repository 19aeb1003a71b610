#pragma once

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "vel/core/string.h"

namespace testsupport {

/// One case of a row file, and where it stands there.
struct TextRow
{
    std::vector<std::string> m_vFields;
    std::string m_sPlace;  ///< file:line

    const std::string& field(std::size_t index) const { return m_vFields.at(index); }
    vel::String wide(std::size_t index) const { return vel::stringFromUtf8(field(index)).value(); }
    /// For SCOPED_TRACE: the place, and the reason that ends every row.
    std::string trace() const { return m_sPlace + ": " + m_vFields.back(); }
};

namespace textrows_details {

inline std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A field in double quotes stands for exactly what is between them, with \t, \n and \r read as in C.
inline std::string unquoted(std::string_view field)
{
    if (field.size() < 2 || field.front() != '"' || field.back() != '"') {
        return std::string(field);
    }
    std::string result;
    for (std::size_t i = 1; i + 1 < field.size(); ++i) {
        if (field[i] != '\\' || i + 2 >= field.size()) {
            result.push_back(field[i]);
            continue;
        }
        const char escaped = field[++i];
        result.push_back(escaped == 't' ? '\t' : escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : escaped);
    }
    return result;
}

inline std::vector<std::string> fieldsOf(std::string_view line)
{
    std::vector<std::string> fields;
    for (;;) {
        const std::size_t bar = line.find('|');
        fields.push_back(unquoted(withoutBlanks(line.substr(0, bar))));
        if (bar == std::string_view::npos) {
            return fields;
        }
        line.remove_prefix(bar + 1);
    }
}

}  // namespace textrows_details

/// The cases of a row file in UTF-8: one a line, fields separated by "|", the last one the reason. Empty lines and
/// lines that begin with "#" are comments. A file that is missing, has no case, or a case with another number of fields
/// is an error.
inline std::vector<TextRow> readRows(const std::string& file, std::size_t fields)
{
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error("no row file " + file);
    }
    std::vector<TextRow> rows;
    std::size_t number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        if (line.empty() || line.front() == '#') {
            continue;
        }
        TextRow row{textrows_details::fieldsOf(line), file + ":" + std::to_string(number)};
        if (row.m_vFields.size() != fields) {
            throw std::runtime_error(row.m_sPlace + ": the row has not " + std::to_string(fields) + " fields");
        }
        rows.push_back(std::move(row));
    }
    if (rows.empty()) {
        throw std::runtime_error("no case in row file " + file);
    }
    return rows;
}

}  // namespace testsupport
