// Bodies that are made to cost much. What reading costs is counted in allocations and in what is kept, not in seconds.

#include <gtest/gtest.h>

#include <string>

#include "client.h"
#include "failingallocator.h"
#include "jsonbody.h"
#include "runningserver.h"
#include "serverlimits.h"

namespace {

using server::WantedFields;

WantedFields wantedFields()
{
    WantedFields wanted;
    wanted.m_tTexts = {{"sort", std::nullopt}, {"text", std::nullopt}};
    wanted.m_sArray = "lines";
    return wanted;
}

/// The word of the refusal; empty when the body is taken.
std::string refusalOf(const std::string& body)
{
    WantedFields wanted = wantedFields();
    try {
        server::readJsonBody(body, wanted);
    } catch (const server::Refusal& refusal) {
        return refusal.m_pCode;
    }
    return {};
}

std::size_t allocationsOf(const std::string& body)
{
    const testsupport::AllocationCount count;
    refusalOf(body);
    return count.value();
}

/// `piece` so many times, with commas between.
std::string repeated(const std::string& piece, std::size_t times)
{
    std::string all;
    for (std::size_t index = 0; index < times; ++index) {
        all += (index == 0 ? "" : ",") + piece;
    }
    return all;
}

std::string objectOfKeys(std::size_t count)
{
    std::string body = "{";
    for (std::size_t index = 0; index < count; ++index) {
        body += (index == 0 ? "\"k" : ",\"k") + std::to_string(index) + "\":0";
    }
    return body + "}";
}

TEST(Bodies, onlyWhatIsAskedForIsKept)
{
    WantedFields wanted = wantedFields();
    server::readJsonBody(R"({"x":[{"sort":"no"}],"sort":"sv","lines":["a","b"],"text":7,"y":{"lines":["c"]}})", wanted);
    EXPECT_EQ(*wanted.m_tTexts.at("sort"), L"sv");
    EXPECT_EQ(*wanted.m_tTexts.at("text"), L"7");
    EXPECT_EQ(wanted.m_tTexts.size(), 2U);
    EXPECT_EQ(wanted.m_tArray, (std::vector<std::string>{"a", "b"}));
}

TEST(Bodies, keysDepthAndElementsHaveLimits)
{
    EXPECT_EQ(refusalOf(objectOfKeys(server::kBodyKeys)), "");
    EXPECT_EQ(refusalOf(objectOfKeys(server::kBodyKeys + 1)), "too-many-fields");
    EXPECT_EQ(refusalOf("{\"x\":[" + repeated("{\"a\":0}", server::kBodyKeys - 1) + "]}"), "");
    EXPECT_EQ(refusalOf("{\"x\":[" + repeated("{\"a\":0}", server::kBodyKeys) + "]}"), "too-many-fields");
    const auto nested = [](std::size_t depth) {  // the object is the first level
        return "{\"x\":" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}";
    };
    EXPECT_EQ(refusalOf(nested(server::kBodyDepth)), "");
    EXPECT_EQ(refusalOf(nested(server::kBodyDepth + 1)), "too-deep");
    EXPECT_EQ(refusalOf("{\"x\":" + std::string(500'000, '[')), "too-deep");
    EXPECT_EQ(refusalOf("{\"x\":[" + repeated("0", server::kLines) + "]}"), "");
    EXPECT_EQ(refusalOf("{\"x\":[" + repeated("0", server::kLines + 1) + "]}"), "too-many-elements");
    EXPECT_EQ(refusalOf("{\"lines\":[" + repeated("\"\"", server::kLines + 1) + "]}"), "bad-field");
    EXPECT_EQ(refusalOf(R"({"sort":"a","sort":"b"})"), "bad-field");
    EXPECT_EQ(refusalOf(R"({"x":1,"x":2})"), "");
}

TEST(Bodies, aHundredThousandKeysCostNoMoreThanTheFirstOfThem)
{
    const std::size_t few = allocationsOf(objectOfKeys(server::kBodyKeys + 1));
    const std::size_t many = allocationsOf(objectOfKeys(100'000));
    EXPECT_LT(few, 500U);
    EXPECT_LE(many, few + 10);
}

TEST(Bodies, linesCostWhatTheyAre)
{
    const auto allocations = [](std::size_t lines) {
        return allocationsOf("{\"lines\":[" + repeated("\"" + std::string(40, 'a') + "\"", lines) + "]}");
    };
    EXPECT_LE(allocations(8000), 4 * allocations(2000) + 10);
}

TEST(Bodies, anAnswerThatWouldBeTooLargeIsRefused)
{
    const tests::RunningServer server;
    const std::string ligature =
        "\xEF\xB7\xBA";  // its key is that of eighteen characters, its reference has eight bytes
    std::string line;
    for (int index = 0; index < 21'000; ++index) {
        line += ligature;
    }
    const tests::Reply sorted =
        tests::post(server.port(), "/api/sort?sort=und", "{\"lines\":[" + repeated("\"" + line + "\"", 16) + "]}");
    EXPECT_EQ(sorted.m_nStatus, 413U);
    EXPECT_EQ(sorted.json()["error"]["code"], "answer-too-large");
    std::string text;
    for (int index = 0; index < 16; ++index) {
        text += line;
    }
    const tests::Reply encoded =
        tests::post(server.port(), "/api/encode", "{\"text\":\"" + text + "\",\"charset\":\"koi8-r\"}");
    EXPECT_EQ(encoded.m_nStatus, 413U);
    EXPECT_EQ(encoded.json()["error"]["code"], "answer-too-large");
    const tests::Reply longer =
        tests::post(server.port(), "/api/sort", "{\"lines\":[\"" + std::string(server::kLineBytes + 1, 'a') + "\"]}");
    EXPECT_EQ(longer.m_nStatus, 400U);
    EXPECT_EQ(longer.json()["error"]["field"], "lines");
}

}  // namespace
