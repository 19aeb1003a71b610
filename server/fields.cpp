#include "fields.h"

#include <algorithm>
#include <utility>

#include "answers/text.h"
#include "jsonbody.h"

namespace server {

using vel::String;

namespace {

std::vector<std::string> parametersNamed(std::string_view name, const Target& target)
{
    std::vector<std::string> texts;
    for (const auto& [each, value] : target.m_tParameters) {
        if (each == name) {
            texts.push_back(answers::utf8Text(value));
        }
    }
    return texts;
}

}  // namespace

Fields::Fields(const Call& call, const std::vector<const char*>& texts, const char* array, const char* parameter)
    : m_rCall(call), m_bHasBody(call.request().m_sMethod == "POST"), m_pArray(array)
{
    if (!m_bHasBody) {
        m_tArray = array == nullptr ? m_tArray : parametersNamed(parameter, call.target());
        return;
    }
    WantedFields wanted;
    wanted.m_sArray = array == nullptr ? std::string_view() : array;
    for (const char* name : texts) {
        wanted.m_tTexts.emplace(name, std::nullopt);
    }
    readJsonBody(call.request().m_sBody, wanted);
    m_tTexts = std::move(wanted.m_tTexts);
    m_tArray = std::move(wanted.m_tArray);
}

std::optional<String> Fields::text(const char* name) const
{
    return m_bHasBody ? m_tTexts.find(name)->second : m_rCall.target().find(name);
}

const std::vector<std::string>& Fields::texts(std::size_t longest) const
{
    const auto isTooLong = [longest](const std::string& each) { return each.size() > longest; };
    if (std::any_of(m_tArray.begin(), m_tArray.end(), isTooLong)) {
        throw badField(m_pArray, "an array of texts of at most " + std::to_string(longest) + " bytes");
    }
    return m_tArray;
}

}  // namespace server
