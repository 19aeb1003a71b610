#include "answers/charsetanswer.h"
#include "fields.h"
#include "routes/routes.h"
#include "serverlimits.h"

namespace server {

using answers::Json;
using vel::Locale;

namespace {

vel::Handle<const vel::CharacterSetList> listNamed(const Call& call, const char* parameter)
{
    auto list = call.catalogues().characterSetList(call.target().text(parameter, kLanguageLength));
    if (list.isNull()) {
        throw Refusal{404, "no-such-list", "There is no list of character sets of that name."};
    }
    return list;
}

/// Of data without any character set.
vel::Handle<const vel::CharacterSet> utf8()
{
    return vel::makeHandle<const vel::CharacterSet>(L"utf-8", L"utf-8");
}

/// The one that is asked for by its label, else the response's.
vel::Handle<const vel::CharacterSet> charsetIn(const Fields& fields, const Call& call, const Locale& locale)
{
    const vel::String label = fields.text("charset").value_or(vel::String());
    if (label.isEmpty()) {
        const auto charset = call.characterSet(locale);
        return charset.isNull() ? utf8() : charset;
    }
    const auto& resolver = call.catalogues().characterSets();
    const auto definition = resolver.getCharacterSetDefinition(label);
    if (definition.isNull()) {
        throw Refusal{404, "no-such-charset", "There is no character set of that label.", {}, "charset"};
    }
    return resolver.createCharacterSet(label, *definition);
}

vel::EUnencodable policyIn(const Fields& fields)
{
    const vel::String policy = fields.text("unencodable").value_or(vel::String());
    if (policy.isEmpty() || policy == L"reference") {
        return vel::kUnencodableReference;
    }
    if (policy != L"substitute") {
        throw Refusal{400,
                      "bad-field",
                      "The field unencodable is not accepted: accepted are reference and substitute.",
                      {},
                      "unencodable"};
    }
    return vel::kUnencodableSubstitute;
}

}  // namespace

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
    return call.answer(answers::describeCharacterSet(charset.isNull() ? *utf8() : *charset), locale);
}

HttpAnswer answerCharsets(const Call& call)
{
    Json json;
    json["charsets"] = Json::array();
    for (const auto& [label, definition] : call.catalogues().characterSets().getCharacterSetDefinitions()) {
        json["charsets"].push_back(answers::describeDefinition(*definition));
    }
    return call.answer(json, call.locale());
}

HttpAnswer answerEncode(const Call& call)
{
    const Fields fields(call, {"text", "charset", "unencodable"});
    const auto text = fields.text("text");
    if (!text) {
        throw Refusal{400, "bad-field", "The field text is required.", {}, "text"};
    }
    const vel::EUnencodable policy = policyIn(fields);
    const Locale locale = call.locale();
    const auto charset = charsetIn(fields, call, locale);
    call.count(kStageEncoding);
    try {
        return call.answer(answers::describeEncoded(*text, *charset, policy, kAnswerBytes), locale);
    } catch (const answers::TooLarge&) {
        throw answerTooLarge();
    }
}

}  // namespace server
