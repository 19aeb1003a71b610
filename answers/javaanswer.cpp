#include "answers/javaanswer.h"

#include "answers/text.h"

namespace answers {

Json describeJava(const vel::JavaLocale& java)
{
    Json json;
    json["language"] = utf8Text(java.m_sLanguage);
    json["country"] = utf8Text(java.m_sCountry);
    json["variant"] = utf8Text(java.m_sVariant);
    json["string"] = utf8Text(java.toString());
    return json;
}

}  // namespace answers
