#include "answers/charsetanswer.h"

#include <string_view>

#include "answers/text.h"
#include "vel/transcoding/transcodingencoder.h"

namespace answers {

namespace {

std::size_t countUnencodable(std::wstring_view text, const vel::UniversalTranscoding& transcoding)
{
    vel::TranscodingEncoder encoder(transcoding, vel::kUnencodableError);
    char bytes[4096];
    std::size_t count = 0;
    for (;;) {
        const vel::TranscodingResult result = encoder.encode(text.data(), text.size(), bytes, sizeof bytes);
        text.remove_prefix(result.m_nRead);
        if (result.isComplete()) {
            return count;
        }
        if (result.m_eStatus == vel::kTranscodingUnencodable) {
            text.remove_prefix(1);
            ++count;
        }
    }
}

}  // namespace

Json describeCharacterSet(const vel::CharacterSet& set)
{
    Json json;
    json["label"] = utf8Text(set.getLabel());
    json["implementation"] = utf8Text(set.getTranscoding().getName());
    return json;
}

Json describeDefinition(const vel::CharacterSetDefinition& definition)
{
    Json json;
    json["definition"] = utf8Text(definition.getDefinitionLabel());
    json["implementations"] = Json::array();
    for (const vel::String& name : definition.getImplementationNames()) {
        json["implementations"].push_back(utf8Text(name));
    }
    return json;
}

Json describeEncoded(const vel::String& text, const vel::CharacterSet& set, vel::EUnencodable policy)
{
    vel::NarrowString bytes;
    set.getTranscoding().encode(text, bytes, policy);
    Json json = describeCharacterSet(set);
    json["characters"] = text.length();
    json["replaced"] = countUnencodable(text, set.getTranscoding());
    json["bytes"] = hexadecimalText(bytes);
    return json;
}

}  // namespace answers
