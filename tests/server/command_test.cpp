#include <gtest/gtest.h>

#include "api.h"
#include "questions.h"
#include "runningserver.h"

namespace {

TEST(Command, givesTheServersAnswers)
{
    server::Metrics metrics(server::Api::routes());
    const server::Api api(tests::packCatalogues(), metrics);
    for (const tests::Question& question : tests::questionsForBoth()) {
        const server::HttpAnswer answer = api.answer(question.m_tRequest);
        const std::string where = question.m_tRequest.m_sTarget + " " + question.m_tRequest.m_sCookie;
        ASSERT_EQ(answer.m_nStatus, 200U) << where << answer.m_sBody;
        EXPECT_EQ(question.m_pAsCommand(answers::Json::parse(answer.m_sBody)),
                  tests::askCommand(question, WEBI18N_COMMAND, WEBI18N_PACK_DIR))
            << where;
    }
}

}  // namespace
