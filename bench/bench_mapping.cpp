#include <unicode/localematcher.h>
#include <unicode/uenum.h>
#include <unicode/uloc.h>

#include <array>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "rows.h"
#include "vel/config/configreader.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlelement.h"
#include "vel/xml/xmlpath.h"
#include "webi18n/localemapping.h"

// From a header to a locale: ours over all rules of the pack, the peers with 32 supported locales.

namespace bench {

namespace {

constexpr std::array<const char*, 32> kSupported = {
    "en_US", "en_GB", "en_AU", "en_CA", "fr_FR", "fr_CA", "de_DE", "de_CH", "de_AT",   "es_ES",  "es_MX",
    "it_IT", "pt_BR", "pt_PT", "nl_NL", "sv_SE", "nb_NO", "da_DK", "fi_FI", "pl_PL",   "cs_CZ",  "hu_HU",
    "ru_RU", "tr_TR", "el_GR", "he_IL", "ar_EG", "hi_IN", "ja_JP", "ko_KR", "zh_Hans", "zh_Hant"};

/// Headers as the peers take them and as ours does.
struct Headers
{
    std::vector<std::string> m_tBytes;
    std::vector<vel::String> m_tWide;

    void add(const std::string& header)
    {
        const std::optional<vel::String> wide = vel::stringFromUtf8(header);
        if (!wide) {
            throw std::runtime_error("a header is not UTF-8");
        }
        m_tBytes.push_back(header);
        m_tWide.push_back(*wide);
    }
};

/// The lines of the file but comments and empty ones; where a line has columns, the header is the last.
Headers readHeaders(const std::string& name)
{
    std::ifstream file(name);
    Headers headers;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.front() != '#') {
            headers.add(line.substr(line.rfind('\t') + 1));
        }
    }
    if (headers.m_tBytes.empty()) {
        throw std::runtime_error(name + ": no headers");
    }
    return headers;
}

Headers oneHeader(const std::string& header)
{
    Headers headers;
    headers.add(header);
    return headers;
}

/// The text that the mapping file's first rule stands for.
std::string prefixOfFirstRule(const Data& data)
{
    const vel::XmlDocument document = vel::XmlDocument::load(data.mapping());
    const vel::XmlPath path(L"localeMapping[@name=\"httpAcceptLanguage\"]/choose/when");
    const auto rules = document.root().select(path, 1);
    if (rules.empty()) {
        throw std::runtime_error(data.m_sMapping + ": no rules");
    }
    const std::wstring_view pattern = rules.front()->attribute(L"matches");
    return vel::toUtf8Lossy(pattern.substr(0, pattern.find(L'*')));
}

using Mapping = std::shared_ptr<vel::LocaleMapping>;

Mapping loadMapping(const Data& data, const vel::ConfigReader& config)
{
    const Mapping mapping = std::make_shared<vel::LocaleMapping>(loadCatalogue(data, config));
    mapping->loadMappings(data.mapping());
    return mapping;
}

Batch ours(const Mapping& mapping, const Headers& headers)
{
    const auto mapAll = [mapping, headers] {
        for (const vel::String& header : headers.m_tWide) {
            keep(mapping->mapLocale(header, vel::String()));
        }
    };
    return repeated(mapAll, headers.m_tWide.size());
}

/// With the conversion of the bytes that a request brings.
Batch oursFromBytes(const Mapping& mapping, const Headers& headers)
{
    const auto mapAll = [mapping, headers] {
        for (const std::string& header : headers.m_tBytes) {
            keep(mapping->mapLocale(*vel::stringFromUtf8(header), vel::String()));
        }
    };
    return repeated(mapAll, headers.m_tBytes.size());
}

void check(UErrorCode status, const char* operation)
{
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string(operation) + ": " + u_errorName(status));
    }
}

/// A matcher that is built once, as a server would.
Batch icuMatcher(const Headers& headers)
{
    UErrorCode status = U_ZERO_ERROR;
    std::vector<icu::Locale> supported(kSupported.begin(), kSupported.end());
    icu::LocaleMatcher::Builder builder;
    builder.setSupportedLocales(supported.begin(), supported.end());
    const auto matcher = std::make_shared<icu::LocaleMatcher>(builder.build(status));
    check(status, "LocaleMatcher");
    const auto mapAll = [matcher, headers] {
        for (const std::string& header : headers.m_tBytes) {
            UErrorCode each = U_ZERO_ERROR;
            keep(matcher->getBestMatchForListString(header, each));
        }
    };
    return repeated(mapAll, headers.m_tBytes.size());
}

Batch icuAcceptLanguage(const Headers& headers)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::shared_ptr<UEnumeration> available(
        uenum_openCharStringsEnumeration(kSupported.data(), static_cast<int32_t>(kSupported.size()), &status),
        uenum_close);
    check(status, "uenum_openCharStringsEnumeration");
    const auto mapAll = [available, headers] {
        for (const std::string& header : headers.m_tBytes) {
            UErrorCode each = U_ZERO_ERROR;
            UAcceptResult result = ULOC_ACCEPT_FAILED;
            char locale[ULOC_FULLNAME_CAPACITY];
            uenum_reset(available.get(), &each);
            uloc_acceptLanguageFromHTTP(locale, sizeof locale, &result, header.c_str(), available.get(), &each);
            keep(locale);
        }
    };
    return repeated(mapAll, headers.m_tBytes.size());
}

constexpr const char* kMatcher = "icu::LocaleMatcher, 32 locales";
constexpr const char* kAcceptLanguage = "uloc_acceptLanguageFromHTTP, 32 locales";

/// A row of ours against the prebuilt matcher, with every locale of the pack allowed.
Situation againstMatcher(const Data& data, const std::string& name, std::function<Headers()> headers,
                         Target target = {})
{
    return {name, kMatcher, target, [data, headers] {
                const Headers chosen = headers();
                return Contest{ours(loadMapping(data, *packConfiguration(data)), chosen), icuMatcher(chosen)};
            }};
}

/// Most of the matching rules have targets that are not allowed: the search goes on to the rule "*".
Situation refusedTargets(const Data& data)
{
    return {"mapLocale, 10 locales allowed, most targets refused", kMatcher, {}, [data] {
                const auto config = vel::makeHandle<vel::MemoryConfigReader>();
                config->set(L"Localization/AllowedLocales",
                            L"en-us,en-gb,da-dk,fi-fi,pl-pl,cs-cz,hu-hu,tr-tr,el-gr,he-il");
                const Headers headers = readHeaders(data.m_sHeaders);
                return Contest{ours(loadMapping(data, *config), headers), icuMatcher(headers)};
            }};
}

}  // namespace

void addMappingRows(std::vector<Situation>& rows, const Data& data)
{
    const auto realHeaders = [data] { return readHeaders(data.m_sHeaders); };
    rows.push_back(againstMatcher(data, "mapLocale, real headers", realHeaders, {Target::kRatioAtLeast, 20}));
    rows.push_back({"mapLocale, real headers, C interface", kAcceptLanguage, {Target::kRatioAtLeast, 200}, [=] {
                        return Contest{ours(loadMapping(data, *packConfiguration(data)), realHeaders()),
                                       icuAcceptLanguage(realHeaders())};
                    }});
    rows.push_back({"mapLocale, real headers, from UTF-8 bytes", kMatcher, {}, [=] {
                        return Contest{oursFromBytes(loadMapping(data, *packConfiguration(data)), realHeaders()),
                                       icuMatcher(realHeaders())};
                    }});
    rows.push_back(againstMatcher(data, "mapLocale, hit on the first rule",
                                  [data] { return oneHeader(prefixOfFirstRule(data)); }));
    rows.push_back(
        againstMatcher(data, "mapLocale, hit on the last rule, \"*\"", [] { return oneHeader("qqq,qqz;q=0.5"); }));
    rows.push_back(refusedTargets(data));
}

}  // namespace bench
