#include "answers/mappinganswer.h"

#include "answers/text.h"

namespace answers {

Json describeRule(const vel::LocaleMappingRule& rule)
{
    Json json;
    json["index"] = rule.m_nIndex;
    json["matches"] = utf8Text(rule.m_sMatches);
    json["definition"] = utf8Text(rule.m_sDefinition);
    return json;
}

const char* reasonOf(const vel::LocaleMappingRule& skipped)
{
    return skipped.m_sDefinition.isEmpty() ? "no target" : "not allowed";
}

Json describeMapping(std::wstring_view input, const vel::LocaleMappingExplanation& why)
{
    Json json;
    json["input"] = utf8Text(input);
    json["language"] = utf8Text(why.m_sLanguage);
    json["locale"] = utf8Text(why.m_tLocale.definitionName());
    json["rule"] = why.m_tRule ? describeRule(*why.m_tRule) : Json();
    json["skipped"] = Json::array();
    for (const vel::LocaleMappingRule& skipped : why.m_tSkipped) {
        json["skipped"].push_back(describeSkipped(skipped));
    }
    return json;
}

Json describeSkipped(const vel::LocaleMappingRule& skipped)
{
    Json json = describeRule(skipped);
    json["reason"] = reasonOf(skipped);
    return json;
}

}  // namespace answers
