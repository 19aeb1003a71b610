#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "answers/json.h"
#include "call.h"

namespace server {

/// What a request asks: the query's parameters, or with POST the members of the JSON object in its body.
class Fields
{
public:
    /// Throws Refusal 400 for a body that is no UTF-8, or no JSON object.
    explicit Fields(const Call& call);

    /// The text of a field, also of one that is an integer; nothing when it is absent or null. Refusal 400 when it is
    /// anything else, or a parameter that stands twice.
    std::optional<vel::String> text(const char* name) const;
    /// The texts of a field that is an array of texts, or of the parameters of another name; empty when it is absent.
    /// Refusal 400 when it is anything else, or has more than `most` texts.
    std::vector<std::string> texts(const char* name, const char* parameter, std::size_t most) const;

private:
    const Call& m_rCall;
    std::optional<answers::Json> m_tBody;
};

}  // namespace server
