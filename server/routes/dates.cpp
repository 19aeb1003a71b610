#include "answers/dateanswer.h"
#include "answers/text.h"
#include "routes/routes.h"
#include "serverlimits.h"

namespace server {

using vel::Locale;
using vel::String;

HttpAnswer answerParse(const Call& call)
{
    if (!call.target().find("text")) {
        throw Refusal{400, "bad-parameter", "The parameter text is required."};
    }
    const String expect = call.target().find("expect").value_or(L"timestamp");
    const auto expected = answers::expectationOf(answers::utf8Text(expect));
    if (!expected) {
        throw Refusal{
            400, "bad-parameter",
            std::string("The parameter expect is not accepted: accepted are ") + answers::ksExpectationNames + "."};
    }
    const Locale locale = call.locale();
    call.count(kStageParsing);
    return call.answer(answers::describeTyped(call.target().text("text", kTypedLength), locale, *expected), locale);
}

}  // namespace server
