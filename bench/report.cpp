#include "report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace bench {

namespace {

std::string format(const char* picture, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, picture, value);
    return text;
}

std::string shownValue(double value, Unit unit)
{
    return unit == kBytes ? format("%.0f B", value) : format(value < 1000 ? "%.1f" : "%.0f", value);
}

std::string shownTarget(const Situation& row)
{
    switch (row.m_tTarget.m_eKind) {
    case Target::kRatioAtLeast:
        return format("ratio >= %g", row.m_tTarget.m_nValue);
    case Target::kOursBelow:
        return "ours < " + format("%.0f", row.m_tTarget.m_nValue) + (row.m_eUnit == kBytes ? " B" : " ns");
    default:
        return {};
    }
}

std::string shownRatio(double ratio)
{
    return format(ratio < 10 ? "%.2f" : "%.1f", ratio);
}

std::size_t widthOf(const std::vector<const Situation*>& rows, std::string Situation::*text, std::size_t least)
{
    for (const Situation* row : rows) {
        least = std::max(least, (row->*text).size());
    }
    return least;
}

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + '"';
}

/// One member of an object, with the comma before it.
std::string member(const char* key, const std::string& json)
{
    return std::string(", \"") + key + "\": " + json;
}

std::string jsonRow(const Result& result)
{
    const Situation& row = *result.m_pSituation;
    std::string json = "{\"row\": " + quoted(row.m_sName);
    json += member("batches", std::to_string(result.m_nBatches));
    json += member("unit", row.m_eUnit == kBytes ? "\"bytes\"" : "\"ns\"");
    json += member("ours", format("%.2f", result.m_nOurs));
    if (result.hasPeer()) {
        json += member("peer", quoted(row.m_sPeer));
        json += member("peerValue", format("%.2f", result.m_nPeer));
        json += member("ratio", format("%.4f", result.ratio()));
    }
    if (row.m_tTarget.m_eKind != Target::kNone) {
        json += member("target", quoted(shownTarget(row)));
        json += member("reached", result.isReached() ? "true" : "false");
    }
    return json + "}";
}

}  // namespace

Table::Table(const std::vector<const Situation*>& rows, std::size_t batches)
    : m_nNameWidth(widthOf(rows, &Situation::m_sName, 3)), m_nPeerWidth(widthOf(rows, &Situation::m_sPeer, 4))
{
    std::printf(
        "Processor time, by the clock for commands and the server; medians of %zu alternating batches, fewer where "
        "one takes seconds. ratio = peer ns / ours ns: above 1, ours is the faster.\n",
        batches);
    std::printf("%-*s | %12s | %-*s | %12s | %8s | target\n", static_cast<int>(m_nNameWidth), "row", "ours ns",
                static_cast<int>(m_nPeerWidth), "peer", "peer ns", "ratio");
}

void Table::print(const Result& result) const
{
    const Situation& row = *result.m_pSituation;
    std::string target = shownTarget(row);
    if (!target.empty()) {
        target += result.isReached() ? ": reached" : ": MISSED";
    }
    const bool hasPeer = result.hasPeer();
    std::printf("%-*s | %12s | %-*s | %12s | %8s | %s\n", static_cast<int>(m_nNameWidth), row.m_sName.c_str(),
                shownValue(result.m_nOurs, row.m_eUnit).c_str(), static_cast<int>(m_nPeerWidth),
                hasPeer ? row.m_sPeer.c_str() : "-", hasPeer ? shownValue(result.m_nPeer, row.m_eUnit).c_str() : "-",
                hasPeer ? shownRatio(result.ratio()).c_str() : "-", target.c_str());
    std::fflush(stdout);
}

void writeJson(const std::string& file, const std::vector<Result>& results)
{
    std::ofstream out(file);
    out << "{\"ratio\": \"peer / ours\", \"rows\": [";
    for (std::size_t i = 0; i < results.size(); ++i) {
        out << (i == 0 ? "\n  " : ",\n  ") << jsonRow(results[i]);
    }
    out << "\n]}\n";
    if (!out.flush()) {
        throw std::runtime_error(file + ": cannot be written");
    }
}

}  // namespace bench
