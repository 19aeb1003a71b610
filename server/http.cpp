#include "http.h"

#include "answers/json.h"

namespace server {

HttpAnswer answerOf(const Refusal& refusal)
{
    answers::Json json;
    json["error"]["status"] = refusal.m_nStatus;
    json["error"]["code"] = refusal.m_pCode;
    json["error"]["message"] = refusal.m_sText;
    if (!refusal.m_sField.empty()) {
        json["error"]["field"] = refusal.m_sField;
    }
    HttpAnswer answer;
    answer.m_nStatus = refusal.m_nStatus;
    answer.m_sContentType = "application/json; charset=utf-8";
    answer.m_sBody = json.dump() + "\n";
    answer.m_tHeaders = refusal.m_tHeaders;
    return answer;
}

}  // namespace server
