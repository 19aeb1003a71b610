#include "datefields.h"

#include "text.h"
#include "vel/core/string.h"

namespace cli {

using vel::ParseDateTime;

void addDateTime(const vel::DateTime& value, Json& json)
{
    json["year"] = value.m_nYear;
    json["month"] = value.m_nMonth;
    json["day"] = value.m_nDay;
    json["hour"] = value.m_nHour;
    json["minute"] = value.m_nMinute;
    json["second"] = value.m_nSecond;
    json["fraction"] = value.m_nFraction;
}

Json fieldNames(unsigned fields)
{
    static constexpr std::pair<unsigned, const char*> kNames[] = {{ParseDateTime::kYear, "year"},
                                                                  {ParseDateTime::kMonth, "month"},
                                                                  {ParseDateTime::kDay, "day"},
                                                                  {ParseDateTime::kHour, "hour"},
                                                                  {ParseDateTime::kMinute, "minute"},
                                                                  {ParseDateTime::kSecond, "second"},
                                                                  {ParseDateTime::kNanoseconds, "nanoseconds"}};
    Json names = Json::array();
    for (const auto& [field, name] : kNames) {
        if ((fields & field) != 0) {
            names.push_back(name);
        }
    }
    return names;
}

void answerWithFacts(const Json& json, Output& output)
{
    Facts facts;
    for (const auto& [name, value] : json.items()) {
        const bool isText = value.is_string();
        facts.emplace_back(name, isText ? quotedText(*vel::stringFromUtf8(value.get<std::string>())) : value.dump());
    }
    output.answer(json, facts);
}

}  // namespace cli
