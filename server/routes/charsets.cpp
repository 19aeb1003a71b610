#include "answers/text.h"
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
    Json json;
    json["label"] = charset.isNull() ? "utf-8" : answers::utf8Text(charset->getLabel());
    json["implementation"] = charset.isNull() ? "utf-8" : answers::utf8Text(charset->getTranscoding().getName());
    return call.answer(json, locale);
}

}  // namespace server
