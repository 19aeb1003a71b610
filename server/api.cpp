#include "api.h"

#include <exception>

#include "pagefiles.h"
#include "routes/routes.h"

namespace server {

namespace {

struct Route
{
    const char* m_pPath;
    HttpAnswer (*m_pAnswer)(const Call&);
    bool m_bTakesBody = false;  ///< what is asked may also be sent with POST
};

constexpr const char* ksHealth = "/healthz";
constexpr const char* ksMetrics = "/metrics";
constexpr const char* ksPage = "page";

constexpr Route kRoutes[] = {
    {"/api/resolve", &answerResolve},
    {"/api/locale", &answerLocale},
    {"/api/locales", &answerLocales},
    {"/api/languages", &answerLanguages},
    {"/api/java", &answerJava},
    {"/api/parse", &answerParse},
    {"/api/render", &answerRender},
    {"/api/currencies", &answerCurrencies},
    {"/api/preferences", &answerPreferences, true},
    {"/api/charset", &answerCharset},
    {"/api/charsets", &answerCharsets},
    {"/api/encode", &answerEncode, true},
    {"/api/sort", &answerSort, true},
    {"/api/sorts", &answerSorts},
};

void requireReading(const HttpRequest& request)
{
    if (request.m_sMethod != "GET" && request.m_sMethod != "HEAD") {
        throw Refusal{405, "wrong-method", "Here only GET and HEAD are answered.", {{"Allow", "GET, HEAD"}}};
    }
}

void requireMethod(const HttpRequest& request, const Route& route)
{
    if (!route.m_bTakesBody) {
        requireReading(request);
    } else if (request.m_sMethod != "GET" && request.m_sMethod != "HEAD" && request.m_sMethod != "POST") {
        throw Refusal{
            405, "wrong-method", "Here only GET, HEAD and POST are answered.", {{"Allow", "GET, HEAD, POST"}}};
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
                requireMethod(request, route);
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
