#include "api.h"

#include <exception>

#include "answers/currencyanswer.h"
#include "answers/dateanswer.h"
#include "answers/javaanswer.h"
#include "answers/localeanswer.h"
#include "answers/mappinganswer.h"
#include "answers/text.h"
#include "call.h"
#include "pagefiles.h"
#include "serverlimits.h"

namespace server {

using answers::Json;
using vel::Locale;
using vel::String;

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

HttpAnswer answerLocale(const Call& call)
{
    const Locale locale = call.locale();
    call.count(kStageLocale);
    return call.answer(answers::describeLocale(locale), locale);
}

HttpAnswer answerParse(const Call& call)
{
    if (!call.target().find("text")) {
        throw Refusal{400, "bad-parameter", "The parameter text is required."};
    }
    const String expect = call.target().find("expect").value_or(L"timestamp");
    const auto expected = answers::expectationOf(answers::utf8Text(expect));
    if (!expected) {
        throw Refusal{
            400, "bad-parameter",
            std::string("The parameter expect is not accepted: accepted are ") + answers::ksExpectationNames + "."};
    }
    const Locale locale = call.locale();
    call.count(kStageParsing);
    return call.answer(answers::describeTyped(call.target().text("text", kTypedLength), locale, *expected), locale);
}

/// The one that "tag" or "symbol" names, else all.
vel::CurrencyLookup::CurrencyList wantedCurrencies(const Call& call)
{
    const vel::CurrencyLookup& currencies = call.catalogues().currencies();
    const auto tag = call.target().find("tag");
    const auto symbol = call.target().find("symbol");
    if (!tag && !symbol) {
        return currencies.getCurrencyList();
    }
    const auto found = tag ? currencies.lookupCurrencyTag(*tag) : currencies.lookupCurrencySymbol(*symbol);
    if (found.isNull()) {
        throw Refusal{404, "no-such-currency", "There is no currency of that tag or symbol."};
    }
    return {found};
}

HttpAnswer answerCurrencies(const Call& call)
{
    const Locale locale = call.locale();
    const String language = call.language(locale);
    const answers::Captions captions = call.catalogues().captions(language);
    call.count(kStageCurrencies);
    Json json;
    json["language"] = answers::utf8Text(language);
    json["currencies"] = Json::array();
    for (const auto& currency : wantedCurrencies(call)) {
        json["currencies"].push_back(answers::describeCurrency(*currency, captions));
    }
    return call.answer(json, locale);
}

vel::Handle<const vel::CharacterSetList> listNamed(const Call& call, const char* parameter)
{
    auto list = call.catalogues().characterSetList(call.target().text(parameter, kLanguageLength));
    if (list.isNull()) {
        throw Refusal{404, "no-such-list", "There is no list of character sets of that name."};
    }
    return list;
}

/// Between two lists that are named, or for this very request.
HttpAnswer answerCharset(const Call& call)
{
    const Locale locale = call.locale();
    vel::Handle<const vel::CharacterSet> charset;
    if (call.target().find("supported") || call.target().find("preferred")) {
        const auto supported = listNamed(call, "supported");
        charset = call.catalogues().characterSets().getPreferredCharacterSet(*supported, *listNamed(call, "preferred"));
    } else {
        charset = call.characterSet(locale);
    }
    Json json;
    json["label"] = charset.isNull() ? "utf-8" : answers::utf8Text(charset->getLabel());
    json["implementation"] = charset.isNull() ? "utf-8" : answers::utf8Text(charset->getTranscoding().getName());
    return call.answer(json, locale);
}

HttpAnswer answerJava(const Call& call)
{
    const Locale locale = call.locale();
    const bool hasLanguage = call.target().find("uiLanguage").has_value();
    const vel::KWWUILanguage language(call.target().text("uiLanguage", kLanguageLength));
    return call.answer(answers::describeJava(hasLanguage ? vel::NLSUtils::languageLocaleToJavaLocale(language, locale)
                                                         : vel::NLSUtils::localeToJavaLocale(locale)),
                       locale);
}

HttpAnswer answerLanguages(const Call& call)
{
    std::vector<String> languages;
    call.catalogues().languages().getSupportedLanguageList(languages);
    Json json;
    json["languages"] = Json::array();
    for (const String& language : languages) {
        json["languages"].push_back(answers::utf8Text(language));
    }
    return call.answer(json, call.locale());
}

struct Route
{
    const char* m_pPath;
    HttpAnswer (*m_pAnswer)(const Call&);
};

constexpr const char* ksHealth = "/healthz";
constexpr const char* ksMetrics = "/metrics";
constexpr const char* ksPage = "page";

constexpr Route kRoutes[] = {
    {"/api/resolve", &answerResolve},     {"/api/locale", &answerLocale}, {"/api/parse", &answerParse},
    {"/api/charset", &answerCharset},     {"/api/java", &answerJava},     {"/api/currencies", &answerCurrencies},
    {"/api/languages", &answerLanguages},
};

void requireReading(const HttpRequest& request)
{
    if (request.m_sMethod != "GET" && request.m_sMethod != "HEAD") {
        throw Refusal{405, "wrong-method", "Here only GET and HEAD are answered.", {{"Allow", "GET, HEAD"}}};
    }
}

/// What needs no locale, and is answered whatever cookie comes along.
HttpAnswer answerText(const HttpRequest& request, const char* type, std::string text)
{
    requireReading(request);
    HttpAnswer answer;
    answer.m_sContentType = type;
    answer.m_sBody = std::move(text);
    return answer;
}

/// A browser asks each time, and is told when its copy still holds.
HttpAnswer answerPage(const HttpRequest& request, const PageFile& file)
{
    requireReading(request);
    HttpAnswer answer;
    answer.m_pCacheControl = "no-cache";
    answer.m_tHeaders = {{"ETag", file.m_pTag}};
    if (request.m_sIfNoneMatch.find(file.m_pTag) != std::string::npos) {
        answer.m_nStatus = 304;
        return answer;
    }
    answer.m_sContentType = file.m_pType;
    answer.m_sBody.assign(reinterpret_cast<const char*>(file.m_pBytes), file.m_nSize);
    return answer;
}

}  // namespace

std::vector<const char*> Api::routes()
{
    std::vector<const char*> names = {"none", ksHealth, ksMetrics, ksPage};
    for (const Route& route : kRoutes) {
        names.push_back(route.m_pPath);
    }
    return names;
}

HttpAnswer Api::answer(const HttpRequest& request) const
{
    const char* name = "none";
    const auto dispatch = [&]() -> HttpAnswer {
        const std::string_view path = std::string_view(request.m_sTarget).substr(0, request.m_sTarget.find('?'));
        if (path == ksHealth) {
            name = ksHealth;
            return answerText(request, "application/json; charset=utf-8", "{\"status\":\"ok\"}\n");
        }
        if (path == ksMetrics) {
            name = ksMetrics;
            return answerText(request, "text/plain; version=0.0.4; charset=utf-8", m_rMetrics.text());
        }
        for (const Route& route : kRoutes) {
            if (path == route.m_pPath) {
                name = route.m_pPath;
                requireReading(request);
                return route.m_pAnswer(Call(request, m_rCatalogues, m_rMetrics));
            }
        }
        if (const PageFile* file = findPageFile(path)) {
            name = ksPage;
            return answerPage(request, *file);
        }
        throw Refusal{404, "not-found", "There is nothing at this address."};
    };
    HttpAnswer answer;
    try {
        answer = dispatch();
    } catch (const Refusal& refusal) {
        answer = answerOf(refusal);
    } catch (const std::exception&) {
        answer = answerOf({500, "internal-error", "The request could not be answered."});
    }
    answer.m_pRoute = name;
    return answer;
}

}  // namespace server
