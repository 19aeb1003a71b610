#include "facts.h"

#include "text.h"

namespace cli {

namespace {

std::string valueForPeople(const Json& value)
{
    if (value.is_string()) {
        return quotedText(*vel::stringFromUtf8(value.get<std::string>()));
    }
    if (!value.is_array()) {
        return value.dump();
    }
    std::string list;
    for (const Json& each : value) {
        const bool isPair = each.is_array();
        list += (list.empty() ? "" : ", ") +
                (isPair ? valueForPeople(each[0]) + "=" + valueForPeople(each[1]) : valueForPeople(each));
    }
    return list;
}

std::string nameForPeople(const std::string& name)
{
    return visibleText(*vel::stringFromUtf8(name));
}

}  // namespace

Facts factsOf(const Json& json)
{
    Facts facts;
    for (const auto& [name, value] : json.items()) {
        if (!value.is_object()) {
            facts.emplace_back(nameForPeople(name), valueForPeople(value));
            continue;
        }
        for (const auto& [member, inner] : value.items()) {
            facts.emplace_back(nameForPeople(name) + " " + nameForPeople(member), valueForPeople(inner));
        }
    }
    return facts;
}

}  // namespace cli
