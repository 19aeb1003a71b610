#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "call.h"

namespace server {

/// What a request asks: the query's parameters, or with POST the members of the JSON object in its body. Of the body
/// nothing is kept but the fields that a route asks for, and it is read once, in time and memory linear in its length.
class Fields
{
public:
    /// The names of the fields that are texts, and of the one that is an array of texts, if there is one; in a query
    /// its texts are the parameters of another name. The names must outlive it. Throws Refusal 400 for a body that is
    /// no UTF-8 or no JSON object, is deeper than kBodyDepth, or has more than kBodyKeys keys or kLines elements in its
    /// arrays, whatever they are called; for a field that stands twice; and for one that is not what it should be: a
    /// text may also be an integer, and each may be null, which is as if it were absent.
    Fields(const Call& call, const std::vector<const char*>& texts, const char* array = nullptr,
           const char* parameter = nullptr);

    /// The text of a field that was asked for; nothing when it is absent. Refusal 400 for a parameter that stands
    /// twice.
    std::optional<vel::String> text(const char* name) const;
    /// The texts of the array; Refusal 400 when one of them has more than `longest` bytes.
    const std::vector<std::string>& texts(std::size_t longest) const;

private:
    const Call& m_rCall;
    bool m_bHasBody;
    const char* m_pArray;
    std::map<std::string, std::optional<vel::String>, std::less<>> m_tTexts;  // of the body
    std::vector<std::string> m_tArray;
};

}  // namespace server
