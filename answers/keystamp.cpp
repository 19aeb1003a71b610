#include "answers/keystamp.h"

#include "answers/text.h"

namespace answers {

namespace {

constexpr std::string_view kHead = "# sort=";
constexpr std::string_view kStrength = " strength=";
constexpr std::string_view kVersion = " version=";

std::optional<KeyStamp> readJson(const std::string& line)
{
    const Json json = Json::parse(line, nullptr, false);
    KeyStamp stamp;
    const std::pair<const char*, std::string*> fields[] = {{"sort", &stamp.m_sSort}, {"version", &stamp.m_sVersion}};
    for (const auto& [name, text] : fields) {
        if (!json.is_object() || !json.contains(name) || !json[name].is_string()) {
            return std::nullopt;
        }
        *text = json[name].get<std::string>();
    }
    if (!json.contains("strength") || !json["strength"].is_number_unsigned()) {
        return std::nullopt;
    }
    stamp.m_sStrength = std::to_string(json["strength"].get<std::uint64_t>());
    return stamp;
}

}  // namespace

KeyStamp stampOf(const vel::i18n::Collator& collator)
{
    return {utf8Text(collator.sortName()), std::to_string(collator.strength()), utf8Text(collator.version())};
}

Json stampAsJson(const KeyStamp& stamp)
{
    Json json;
    json["sort"] = stamp.m_sSort;
    json["strength"] = std::stoul(stamp.m_sStrength);
    json["version"] = stamp.m_sVersion;
    return json;
}

std::string stampAsLine(const KeyStamp& stamp)
{
    std::string line(kHead);
    line.append(stamp.m_sSort).append(kStrength).append(stamp.m_sStrength).append(kVersion).append(stamp.m_sVersion);
    return line;
}

std::optional<KeyStamp> readStamp(const std::string& line)
{
    if (line.starts_with('{')) {
        return readJson(line);
    }
    const std::size_t strength = line.find(kStrength);
    const std::size_t version = line.find(kVersion);
    if (!line.starts_with(kHead) || strength == std::string::npos || version == std::string::npos ||
        version < strength) {
        return std::nullopt;
    }
    const std::size_t strengthStart = strength + kStrength.size();
    return KeyStamp{line.substr(kHead.size(), strength - kHead.size()),
                    line.substr(strengthStart, version - strengthStart), line.substr(version + kVersion.size())};
}

}  // namespace answers
