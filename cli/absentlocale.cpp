#include "absentlocale.h"

#include "failures.h"
#include "text.h"

namespace cli {

void refuseLocale(const vel::String& name, Session& session, Output& output)
{
    const std::string problem = session.absenceOf(name);
    if (!output.isBatch()) {
        complain("error", visibleText(name) + ": " + problem);
        return;
    }
    Json json;
    json["locale"] = utf8Text(name);
    json["error"] = problem;
    output.answer(json, {{"locale", quotedText(name)}, {"error", problem}});
}

}  // namespace cli
