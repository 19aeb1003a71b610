#include "fields.h"

#include "answers/text.h"

namespace server {

using answers::Json;
using vel::String;

namespace {

Refusal badField(const std::string& name, const std::string& expected)
{
    return {400, "bad-field", "The field " + name + " is not " + expected + ".", {}, name};
}

Json objectIn(const std::string& body)
{
    std::size_t offset = 0;
    if (!vel::stringFromUtf8(body, &offset)) {
        throw Refusal{400, "bad-encoding", "The body is no UTF-8, at its byte offset " + std::to_string(offset) + "."};
    }
    Json json;
    try {
        json = Json::parse(body);
    } catch (const Json::parse_error& fault) {
        throw Refusal{400, "bad-json", "The body is no JSON, at its byte " + std::to_string(fault.byte) + "."};
    } catch (const Json::out_of_range&) {
        throw Refusal{400, "bad-json", "The body has a number that is too large."};
    }
    if (!json.is_object()) {
        throw Refusal{400, "bad-json", "The body is no JSON object."};
    }
    return json;
}

}  // namespace

Fields::Fields(const Call& call) : m_rCall(call)
{
    if (call.request().m_sMethod == "POST") {
        m_tBody = objectIn(call.request().m_sBody);
    }
}

std::optional<String> Fields::text(const char* name) const
{
    if (!m_tBody) {
        return m_rCall.target().find(name);
    }
    const auto found = m_tBody->find(name);
    if (found == m_tBody->end() || found->is_null()) {
        return std::nullopt;
    }
    if (!found->is_string() && !found->is_number_integer()) {
        throw badField(name, "a text");
    }
    return vel::stringFromUtf8(found->is_string() ? found->get_ref<const std::string&>() : found->dump());
}

std::vector<std::string> Fields::texts(const char* name, const char* parameter, std::size_t most) const
{
    std::vector<std::string> texts;
    if (!m_tBody) {
        for (const auto& [each, value] : m_rCall.target().m_tParameters) {
            if (each == parameter) {
                texts.push_back(answers::utf8Text(value));
            }
        }
        return texts;
    }
    const auto found = m_tBody->find(name);
    if (found == m_tBody->end() || found->is_null()) {
        return texts;
    }
    if (!found->is_array() || found->size() > most) {
        throw badField(name, "an array of at most " + std::to_string(most) + " texts");
    }
    for (const Json& each : *found) {
        if (!each.is_string()) {
            throw badField(name, "an array of texts");
        }
        texts.push_back(each.get<std::string>());
    }
    return texts;
}

}  // namespace server
