#include "call.h"

#include <utility>

#include "answers/text.h"
#include "preferences.h"
#include "serverlimits.h"

namespace server {

using vel::CharacterSet;
using vel::CharacterSetList;
using vel::Handle;
using vel::Locale;
using vel::String;

namespace {

constexpr const wchar_t* ksSupported = L"supported";

/// Of text that the header's grammar has found to be ASCII.
String wideOf(std::string_view ascii)
{
    return String(std::wstring(ascii.begin(), ascii.end()));
}

void append(const Handle<const CharacterSetList>& source, CharacterSetList& list)
{
    if (source.isNull()) {
        return;
    }
    for (auto each = source->definitions_begin(); each != source->definitions_end(); ++each) {
        list.addDefinition(each->first, each->second);
    }
}

}  // namespace

Call::Call(const HttpRequest& request, const Catalogues& catalogues, Metrics& metrics)
    : m_rRequest(request),
      m_rCatalogues(catalogues),
      m_rMetrics(metrics),
      m_tTarget(Target::of(request.m_sTarget)),
      m_tPreferences(preferencesOf(request.m_sCookie))
{
    // Behind the cookie's, and so in front of them: the later one of a key counts.
    for (auto& each : preferencesIn(m_tTarget)) {
        m_tPreferences.push_back(std::move(each));
    }
}

Resolution Call::resolve() const
{
    count(kStageMapping);
    const String language = m_tTarget.text("language", kLanguageLength);
    Resolution resolution;
    resolution.m_tList = parseAcceptLanguage(m_rRequest.m_sAcceptLanguage);
    bool isFirst = true;
    for (const QualityEntry& entry : resolution.m_tList.m_tEntries) {
        if (entry.m_nThousandths == 0) {
            break;  // this language and those behind it are not wanted
        }
        auto why = m_rCatalogues.mapping().explainLocale(wideOf(entry.m_sName), language);
        auto& skipped = resolution.m_tSkipped;
        skipped.insert(skipped.end(), why.m_tSkipped.begin(), why.m_tSkipped.end());
        const bool decides = why.m_tRule && why.m_tRule->m_nIndex != m_rCatalogues.lastRule();
        if (isFirst || decides) {
            resolution.m_tWhy = std::move(why);
        }
        isFirst = false;
        if (decides) {
            resolution.m_pDecided = &entry;
            return resolution;
        }
    }
    if (isFirst) {
        resolution.m_tWhy = m_rCatalogues.mapping().explainLocale(String(), language);
        resolution.m_tSkipped = resolution.m_tWhy.m_tSkipped;
    }
    return resolution;
}

Locale Call::plainLocale() const
{
    Locale locale;
    if (const String name = m_tTarget.text("locale", kLanguageLength); name.isEmpty()) {
        locale = resolve().m_tWhy.m_tLocale;
    } else if (!m_rCatalogues.locales().findLocaleByDefinitionName(name, locale)) {
        throw Refusal{404, "no-such-locale", "There is no allowed locale of that name."};
    }
    return locale;
}

Locale Call::locale() const
{
    Locale locale = plainLocale();
    count(kStageOverrides);
    applyPreferences(m_tPreferences, locale);
    return locale;
}

String Call::language(const Locale& locale) const
{
    return m_rCatalogues.mapping().mapLanguage(locale, m_tTarget.text("language", kLanguageLength)).second;
}

Handle<const CharacterSet> Call::characterSet(const Locale& locale) const
{
    count(kStageCharset);
    const Handle<const CharacterSetList> supported = m_rCatalogues.characterSetList(ksSupported);
    if (supported.isNull() || supported->numDefinitions() == 0) {
        return {};
    }
    const auto own = m_rCatalogues.characterSetList(locale.getInfoAsString(Locale::kCharactersetList));
    const auto& resolver = m_rCatalogues.characterSets();
    if (m_rRequest.m_sAcceptCharset.empty()) {
        return resolver.getPreferredCharacterSet(*supported, own.isNull() ? *supported : *own);
    }
    CharacterSetList accepted;
    for (const QualityEntry& entry : parseAcceptCharset(m_rRequest.m_sAcceptCharset).m_tEntries) {
        if (entry.m_nThousandths == 0) {
            break;
        }
        if (entry.m_sName == "*") {
            append(own.isNull() ? supported : own, accepted);
        } else if (const auto definition = resolver.getCharacterSetDefinition(wideOf(entry.m_sName));
                   !definition.isNull()) {
            accepted.addDefinition(definition->getDefinitionLabel(), definition);
        }
    }
    return resolver.getPreferredCharacterSet(*supported, accepted);
}

HttpAnswer Call::answer(const answers::Json& json, const Locale& locale) const
{
    const Handle<const CharacterSet> charset = characterSet(locale);
    const bool isUtf8 = charset.isNull() || charset->getLabel().equalsNoCase(L"utf-8");
    count(kStageEncoding);
    HttpAnswer answer;
    answer.m_tHeaders = {{"Vary", "Accept-Language, Accept-Charset, Cookie"}};
    // In other sets JSON's own escapes stand for what is not ASCII, so that nothing is lost.
    const std::string text = json.dump(-1, ' ', !isUtf8) + "\n";
    if (text.size() > kAnswerBytes) {
        throw answerTooLarge();
    }
    if (isUtf8) {
        answer.m_sContentType = "application/json; charset=utf-8";
        answer.m_sBody = text;
        return answer;
    }
    vel::NarrowString bytes;
    charset->getTranscoding().encode(wideOf(text), bytes);
    answer.m_sContentType = "application/json; charset=" + answers::utf8Text(charset->getLabel());
    answer.m_sBody = bytes.standard();
    if (answer.m_sBody.size() > kAnswerBytes) {
        throw answerTooLarge();
    }
    return answer;
}

Refusal answerTooLarge()
{
    return {413, "answer-too-large", "The answer would be larger than " + std::to_string(kAnswerBytes) + " bytes."};
}

std::string printable(std::string_view bytes)
{
    if (vel::stringFromUtf8(bytes)) {
        return std::string(bytes);
    }
    std::string text;
    for (const char each : bytes) {
        text += static_cast<unsigned char>(each) < 0x80 ? std::string(1, each) : "\xEF\xBF\xBD";
    }
    return text;
}

}  // namespace server
