#include "datefields.h"

#include "text.h"
#include "vel/core/string.h"

namespace cli {

void answerWithFacts(const Json& json, Output& output)
{
    Facts facts;
    for (const auto& [name, value] : json.items()) {
        const bool isText = value.is_string();
        facts.emplace_back(name, isText ? quotedText(*vel::stringFromUtf8(value.get<std::string>())) : value.dump());
    }
    output.answer(json, facts);
}

}  // namespace cli
