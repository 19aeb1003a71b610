#include "check/findings.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "text.h"

namespace cli {

namespace {

constexpr std::size_t kLongestShown = 60;
constexpr std::size_t kLongestCompared = 40;

const char* nameOf(Severity severity) noexcept
{
    switch (severity) {
    case kInformation:
        return "information";
    case kMinorWarning:
        return "minorWarning";
    case kWarning:
        return "warning";
    default:
        return "error";
    }
}

/// How many letters have to be put in, left out or changed to make one text of the other.
std::size_t distance(std::wstring_view a, std::wstring_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

void Findings::begin(const vel::String& file, bool reported)
{
    m_sFile = utf8Text(file);
    m_bReported = reported;
    m_vPlaced.clear();
}

void Findings::add(const vel::XmlElement& place, Problem problem)
{
    add(place.line(), place.column(), std::move(problem));
}

void Findings::add(std::uint32_t line, std::uint32_t column, Problem problem)
{
    if (m_bReported) {
        m_vPlaced.push_back({line, column, std::move(problem)});
    }
}

void Findings::end()
{
    std::stable_sort(m_vPlaced.begin(), m_vPlaced.end(), [](const Placed& a, const Placed& b) {
        return std::tie(a.m_nLine, a.m_nColumn) < std::tie(b.m_nLine, b.m_nColumn);
    });
    for (const Placed& each : m_vPlaced) {
        write(m_sFile, each);
    }
    m_vPlaced.clear();
}

void Findings::addUnreadable(const vel::XmlException& fault)
{
    const char* rule = fault.line() == 0 ? "unreadable-file" : "malformed-file";
    write(utf8Text(fault.file()), {fault.line(), fault.column(), {kError, rule, visibleText(fault.problem())}});
}

void Findings::addWithoutPlace(const std::string& source, const Problem& problem)
{
    write(source, {0, 0, problem});
}

void Findings::write(const std::string& file, const Placed& finding)
{
    const Problem& problem = finding.m_tProblem;
    Json json;
    json["file"] = file;
    json["line"] = finding.m_nLine;
    json["column"] = finding.m_nColumn;
    json["severity"] = nameOf(problem.m_eSeverity);
    json["rule"] = problem.m_pRule;
    json["message"] = problem.m_sMessage;
    m_tOutput.row(json, visibleText(vel::stringFromUtf8(file).value_or(vel::String())) + ":" +
                            std::to_string(finding.m_nLine) + ":" + std::to_string(finding.m_nColumn) + ": " +
                            nameOf(problem.m_eSeverity) + ": " + problem.m_sMessage + " [" + problem.m_pRule + "]");
    m_bEmpty = false;
}

std::string quotedName(std::wstring_view text)
{
    const bool isLong = text.size() > kLongestShown;
    return "'" + visibleText(text.substr(0, kLongestShown)) + (isLong ? "...'" : "'");
}

vel::String similarName(std::wstring_view text, const std::vector<vel::String>& known)
{
    if (text.size() < 3 || text.size() > kLongestCompared) {
        return {};
    }
    vel::String best;
    std::size_t bestDistance = text.size() < 8 ? 2 : 3;  // what is further away was not meant
    for (const vel::String& name : known) {
        if (name.equalsNoCase(text)) {
            return name;
        }
        if (const std::size_t each = distance(text, name); each < bestDistance) {
            best = name;
            bestDistance = each;
        }
    }
    return best;
}

std::string suggestion(std::wstring_view text, const std::vector<vel::String>& known, const std::string& otherwise)
{
    const vel::String similar = similarName(text, known);
    return similar.isEmpty() ? otherwise : "did you mean " + quotedName(similar) + "?";
}

}  // namespace cli
