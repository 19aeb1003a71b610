#include "casefile.h"

#include <cstdint>
#include <fstream>
#include <stdexcept>

#include "vel/core/string.h"

namespace datestesting {

namespace {

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string> columnsOf(const std::string& line)
{
    std::vector<std::string> columns;
    std::size_t begin = 0;
    for (std::size_t bar = line.find('|'); bar != std::string::npos; bar = line.find('|', begin)) {
        columns.push_back(trimmed(line.substr(begin, bar - begin)));
        begin = bar + 1;
    }
    columns.push_back(trimmed(line.substr(begin)));
    return columns;
}

[[noreturn]] void fail(const CaseRow& row, const std::string& what)
{
    throw std::runtime_error(row.m_sPlace + ": " + what);
}

/// The character that the escape at `position` stands for; the position moves behind it.
wchar_t readEscape(const CaseRow& row, const std::wstring& text, std::size_t& position)
{
    const std::wstring_view simple = L"tnr0\\";
    const std::size_t which = simple.find(text[++position]);
    if (which != std::wstring_view::npos) {
        ++position;
        return L"\t\n\r\0\\"[which];
    }
    const std::size_t close = text.find(L'}', position);
    if (text.compare(position, 2, L"x{") != 0 || close == std::wstring::npos) {
        fail(row, "an unknown escape");
    }
    const unsigned long code = std::stoul(text.substr(position + 2, close - position - 2), nullptr, 16);
    position = close + 1;
    return static_cast<wchar_t>(static_cast<std::uint32_t>(code));
}

}  // namespace

std::vector<CaseRow> readCases(const std::string& file)
{
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error("cannot read " + file);
    }
    std::vector<CaseRow> rows;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (!trimmed(line).empty() && line[0] != '#') {
            rows.push_back({file + ":" + std::to_string(number), columnsOf(line)});
        }
    }
    return rows;
}

std::wstring quotedText(const CaseRow& row, const std::string& column)
{
    if (column.size() < 2 || column.front() != '"' || column.back() != '"') {
        fail(row, "a text without quotes: " + column);
    }
    const std::optional<vel::String> wide = vel::stringFromUtf8(column.substr(1, column.size() - 2));
    if (!wide) {
        fail(row, "not UTF-8");
    }
    const std::wstring text(wide->view());
    std::wstring result;
    for (std::size_t i = 0; i < text.size();) {
        result += text[i] == L'\\' ? readEscape(row, text, i) : text[i++];
    }
    return result;
}

}  // namespace datestesting
