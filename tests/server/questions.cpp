#include "questions.h"

#include <sys/wait.h>

#include <cstdio>
#include <stdexcept>

#include "client.h"
#include "query.h"

namespace tests {

namespace {

using answers::Json;

struct User
{
    const char* m_pKey;
    const char* m_pValue;
};

constexpr User kUsers[] = {{"", ""}, {"dateOrder", "ymd"}, {"decimalSeparator", ";"}, {"24hours", "true"}};
constexpr const char* kLocales[] = {"en-us", "de-de", "fr-ca", "ja-jp", "ar-eg", "th-th"};

std::string whole(const Json& answer)
{
    return answer.dump() + "\n";
}

std::string firstCurrency(const Json& answer)
{
    return whole(answer["currencies"][0]);
}

/// The decision alone: the server tells of the header's entries too.
std::string decision(const Json& answer)
{
    Json json;
    for (const char* member : {"input", "language", "locale", "rule", "skipped"}) {
        json[member] = answer[member];
    }
    return whole(json);
}

std::string names(const Json& answer)
{
    std::string lines;
    for (const Json& each : answer["locales"]) {
        Json json;
        for (const char* member : {"locale", "name", "defaultLanguage"}) {
            json[member] = each[member];
        }
        lines += whole(json);
    }
    return lines;
}

std::string texts(const Json& answer)
{
    std::string lines;
    for (const Json& each : answer["lines"]) {
        Json json;
        json["text"] = each["text"];
        lines += whole(json);
    }
    return lines;
}

/// The stamp, and the keys in the order of the input.
std::string keys(const Json& answer)
{
    Json stamp;
    for (const char* member : {"sort", "strength", "version"}) {
        stamp[member] = answer[member];
    }
    std::vector<std::string> lines(answer["lines"].size());
    for (const Json& each : answer["lines"]) {
        Json json;
        json["key"] = each["key"];
        json["text"] = each["text"];
        lines[each["place"].get<std::size_t>()] = whole(json);
    }
    std::string all = whole(stamp);
    for (const std::string& line : lines) {
        all += line;
    }
    return all;
}

server::HttpRequest getting(const std::string& target, const User& user = {"", ""})
{
    server::HttpRequest request;
    request.m_sMethod = "GET";
    request.m_sTarget = target;
    if (*user.m_pKey != '\0') {
        request.m_sCookie = std::string("webi18n=") + user.m_pKey + "=" + server::percentEncoded(user.m_pValue);
    }
    return request;
}

std::vector<std::string> withUser(std::vector<std::string> arguments, const User& user)
{
    if (*user.m_pKey != '\0') {
        arguments.insert(arguments.end(), {"--user", std::string(user.m_pKey) + "=" + user.m_pValue});
    }
    return arguments;
}

void addLocaleQuestions(const std::string& locale, std::vector<Question>& questions)
{
    for (const User& user : kUsers) {
        questions.push_back(
            {getting("/api/locale?locale=" + locale, user), withUser({"locale", locale}, user), {}, &whole});
        questions.push_back({getting("/api/parse?locale=" + locale + "&expect=date&text=1%2F2%2F2003", user),
                             withUser({"parse", "--locale", locale, "--expect", "date", "1/2/2003"}, user),
                             {},
                             &whole});
    }
    questions.push_back({getting("/api/java?locale=" + locale), {"java", locale}, {}, &whole});
    questions.push_back({getting("/api/currencies?tag=EUR&locale=" + locale),
                         {"currency", "EUR", "--locale", locale},
                         {},
                         &firstCurrency});
    questions.push_back({getting("/api/charset?supported=supported&preferred=locale:" + locale),
                         {"charset", "--supported", "supported", "--preferred", "locale:" + locale},
                         {},
                         &whole});
}

void addSortQuestions(const std::string& sort, const std::string& strength, std::vector<Question>& questions)
{
    const std::vector<std::string> lines = {"z", "\xC3\xB6", "a", "A", "\xC3\xA4", "co-op", "coop", "\xE3\x81\x82"};
    server::HttpRequest request;
    request.m_sMethod = "POST";
    request.m_sTarget = "/api/sort";
    request.m_sBody = Json{{"lines", lines}, {"sort", sort}, {"strength", strength}}.dump();
    std::string input;
    for (const std::string& line : lines) {
        input += line + "\n";
    }
    questions.push_back({request, {"sort", "--sort", sort, "--strength", strength}, input, &texts});
    questions.push_back({request, {"keys", "--sort", sort, "--strength", strength}, input, &keys});
}

std::string quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char each : text) {
        quoted += each == '\'' ? "'\\''" : std::string(1, each);
    }
    return quoted + "'";
}

}  // namespace

std::vector<Question> questionsForBoth()
{
    std::vector<Question> questions;
    for (const char* locale : kLocales) {
        addLocaleQuestions(locale, questions);
    }
    for (const char* header : {"fr-CA", "de", "xx", "th-TH"}) {
        questions.push_back({getting("/api/resolve"), {"explain", header}, {}, &decision});
        questions.back().m_tRequest.m_sAcceptLanguage = header;
    }
    questions.push_back({getting("/api/locales?uiLanguage=fr"), {"locales", "--language", "fr"}, {}, &names});
    questions.push_back({getting("/api/languages"), {"languages"}, {}, &whole});
    addSortQuestions("sv", "0", questions);
    addSortQuestions("de-u-co-phonebk", "1", questions);
    addSortQuestions("en-u-ka-shifted", "8", questions);
    addSortQuestions("binary", "0", questions);
    return questions;
}

std::string askCommand(const Question& question, const std::string& program, const std::string& data)
{
    std::string line =
        "printf %s " + quoted(question.m_sInput) + " | " + quoted(program) + " --json --data " + quoted(data);
    for (const std::string& argument : question.m_tCommand) {
        line += " " + quoted(argument);
    }
    std::FILE* output = popen(line.c_str(), "r");
    if (output == nullptr) {
        throw std::runtime_error("no pipe");
    }
    std::string text;
    char buffer[4096];
    for (std::size_t got = 0; (got = std::fread(buffer, 1, sizeof buffer, output)) > 0;) {
        text.append(buffer, got);
    }
    if (const int status = pclose(output); !WIFEXITED(status) || WEXITSTATUS(status) > 1) {
        throw std::runtime_error("the command fails: " + line);
    }
    return text;
}

std::string bytesOf(const server::HttpRequest& request)
{
    std::string bytes = request.m_sMethod + " " + request.m_sTarget + " HTTP/1.1\r\nHost: localhost\r\n";
    const std::pair<const char*, const std::string&> kFields[] = {{"Accept-Language", request.m_sAcceptLanguage},
                                                                  {"Accept-Charset", request.m_sAcceptCharset},
                                                                  {"Cookie", request.m_sCookie}};
    for (const auto& [name, value] : kFields) {
        bytes += value.empty() ? "" : std::string(name) + ": " + value + "\r\n";
    }
    if (request.m_sMethod == "POST") {
        bytes += std::string(ksFromOurPage) + "Content-Length: " + std::to_string(request.m_sBody.size()) + "\r\n";
    }
    return bytes + "\r\n" + request.m_sBody;
}

}  // namespace tests
