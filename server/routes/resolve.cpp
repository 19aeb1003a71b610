#include "answers/mappinganswer.h"
#include "routes/routes.h"

namespace server {

using answers::Json;

namespace {

Json entriesOf(const Resolution& resolution)
{
    Json entries = Json::array();
    for (const QualityEntry& entry : resolution.m_tList.m_tEntries) {
        Json json;
        json["tag"] = entry.m_sName;
        json["q"] = entry.m_nThousandths / 1000.0;
        json["decided"] = &entry == resolution.m_pDecided;
        entries.push_back(std::move(json));
    }
    return entries;
}

Json malformedOf(const QualityList& list)
{
    Json malformed = Json::array();
    for (const MalformedEntry& entry : list.m_tMalformed) {
        malformed.push_back({{"text", printable(entry.m_sText)}, {"reason", entry.m_pReason}});
    }
    return malformed;
}

}  // namespace

HttpAnswer answerResolve(const Call& call)
{
    const Resolution resolution = call.resolve();
    Json json = answers::describeMapping(L"", resolution.m_tWhy);
    json["input"] = printable(call.request().m_sAcceptLanguage);
    json["skipped"] = Json::array();
    for (const vel::LocaleMappingRule& skipped : resolution.m_tSkipped) {
        json["skipped"].push_back(answers::describeSkipped(skipped));
    }
    json["entries"] = entriesOf(resolution);
    json["malformed"] = malformedOf(resolution.m_tList);
    return call.answer(json, resolution.m_tWhy.m_tLocale);
}

}  // namespace server
