#include "answers/charsetanswer.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "answers/text.h"
#include "vel/transcoding/transcodingencoder.h"

namespace answers {

namespace {

/// The characters of the text that the set lacks, in the text's order, each as often as it stands there.
std::wstring unencodable(std::wstring_view text, const vel::UniversalTranscoding& transcoding)
{
    vel::TranscodingEncoder encoder(transcoding, vel::kUnencodableError);
    char bytes[4096];
    std::wstring characters;
    for (;;) {
        const vel::TranscodingResult result = encoder.encode(text.data(), text.size(), bytes, sizeof bytes);
        text.remove_prefix(result.m_nRead);
        if (result.isComplete()) {
            return characters;
        }
        if (result.m_eStatus == vel::kTranscodingUnencodable) {
            characters += text.front();
            text.remove_prefix(1);
        }
    }
}

/// Each character once, by code point: a long text may lack very many.
Json distinct(std::wstring characters)
{
    std::sort(characters.begin(), characters.end());
    characters.erase(std::unique(characters.begin(), characters.end()), characters.end());
    Json json = Json::array();
    for (const wchar_t& each : characters) {
        json.push_back(utf8Text(std::wstring_view(&each, 1)));
    }
    return json;
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

Json describeEncoded(const vel::String& text, const vel::CharacterSet& set, vel::EUnencodable policy,
                     std::size_t mostBytes)
{
    vel::NarrowString bytes;
    set.getTranscoding().encode(text, bytes, policy);
    if (bytes.length() > mostBytes / 2) {
        throw TooLarge();
    }
    Json json = describeCharacterSet(set);
    json["characters"] = text.length();
    std::wstring lacking = unencodable(text.view(), set.getTranscoding());
    json["replaced"] = lacking.size();
    json["lacking"] = distinct(std::move(lacking));
    json["bytes"] = hexadecimalText(bytes);
    return json;
}

}  // namespace answers
