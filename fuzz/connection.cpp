// A whole connection: bytes come in pieces with pauses between them, then the client sends no more. A plain reader of
// the whole text, which knows no pieces, says which answers are allowed; whatever the pieces, these come, in order, and
// nothing behind them. Where the text is odd in a way that HTTP leaves open, the plain reader says nothing more, and
// only the form of the answers is looked at. The first byte says how the bytes are cut.

#include <sys/socket.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "net/httpserver.h"
#include "require.h"

namespace {

using fuzzing::require;

constexpr std::size_t kMostHeader = 8192;
constexpr std::size_t kMostBody = std::size_t{1} << 20;
constexpr std::string_view ksTokenMarks = "!#$%&'*+-.^_`|~";

/// What may come for one request.
struct Expectation
{
    std::set<unsigned> m_tStatuses;  // empty: nothing but the close
    std::string m_sEcho;             // of an answer with 200
    bool m_bIsLast = true;
    bool m_bIsOdd = false;  // from here on nothing is known
};

std::string lower(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
    return result;
}

bool isToken(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char each) {
        return each < 0x80 &&
               (std::isalnum(each) || ksTokenMarks.find(static_cast<char>(each)) != std::string_view::npos);
    });
}

bool isVisible(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char each) { return each > 0x20 && each < 0x7F; });
}

bool isNumber(std::string_view text, std::string_view digits, std::size_t longest)
{
    return !text.empty() && text.size() <= longest && text.find_first_not_of(digits) == std::string_view::npos;
}

std::string_view takeLine(std::string_view& text)
{
    const std::string_view line = text.substr(0, text.find("\r\n"));
    text.remove_prefix(std::min(text.size(), line.size() + 2));
    return line;
}

using FieldMap = std::multimap<std::string, std::string>;

/// The fields of lines of the plainest form; nothing when there is another line among them.
std::optional<FieldMap> plainFields(std::string_view lines)
{
    FieldMap fields;
    while (!lines.empty()) {
        const std::string_view line = takeLine(lines);
        const std::size_t colon = std::min(line.find(": "), line.size());
        const std::string_view value = line.substr(std::min(colon + 2, line.size()));
        const bool isPlain =
            value.find_first_not_of(' ') == 0 && value.back() != ' ' &&
            std::all_of(value.begin(), value.end(), [](char each) { return each >= 0x20 && each < 0x7F; });
        if (!isToken(line.substr(0, colon)) || !isPlain) {
            return std::nullopt;
        }
        fields.emplace(lower(line.substr(0, colon)), value);
    }
    return fields;
}

/// The value of a field that stands once; nothing when it stands more often or not at all.
std::optional<std::string> only(const FieldMap& fields, const char* name)
{
    return fields.count(name) == 1 ? std::optional(fields.find(name)->second) : std::nullopt;
}

/// The refusals that the header deserves, any of which may come.
std::set<unsigned> faultsOf(std::string_view method, bool isNew, const FieldMap& fields)
{
    std::set<unsigned> faults;
    const auto host = only(fields, "host");
    if (!host) {
        faults.insert(400);
    } else if (*host != "localhost") {
        faults.insert(421);
    }
    if (fields.count("transfer-encoding") != 0) {
        if (fields.count("content-length") != 0 || !isNew) {
            faults.insert(400);
        }
        if (lower(only(fields, "transfer-encoding").value_or("")) != "chunked") {
            faults.insert(501);
        }
    }
    if (fields.count("content-length") != 0) {
        const auto length = only(fields, "content-length");
        if (!length || !isNumber(*length, "0123456789", 18)) {
            faults.insert(400);
        } else if (std::stoull(*length) > kMostBody) {
            faults.insert(413);
        }
    }
    if (method != "GET" && method != "HEAD") {
        if (only(fields, "origin") != "http://localhost") {
            faults.insert(403);
        }
        if (only(fields, "content-type") != "application/json") {
            faults.insert(415);
        }
    }
    return faults;
}

/// Takes a chunked body and what stands behind it. Nothing when it is cut off, or not of the plainest form; then
/// `isOdd` says which.
std::optional<std::string> takeChunks(std::string_view& text, bool& isOdd)
{
    std::string body;
    for (;;) {
        if (text.find("\r\n") == std::string_view::npos) {
            isOdd = !text.empty();
            return std::nullopt;
        }
        const std::string_view digits = takeLine(text);
        isOdd = !isNumber(digits, "0123456789abcdefABCDEF", 5) || body.size() > kMostBody / 2;
        if (isOdd) {
            return std::nullopt;
        }
        const std::size_t size = std::stoul(std::string(digits), nullptr, 16);
        if (size == 0) {
            break;
        }
        if (text.size() < size + 2) {
            isOdd = text.size() > size;
            return std::nullopt;
        }
        body.append(text.substr(0, size));
        isOdd = text.substr(size, 2) != "\r\n";
        if (isOdd) {
            return std::nullopt;
        }
        text.remove_prefix(size + 2);
    }
    if (text.substr(0, 2) == "\r\n") {
        text.remove_prefix(2);
        return body;
    }
    isOdd = true;  // trailers: the form of their lines is the parser's business
    return std::nullopt;
}

Expectation oddOne()
{
    Expectation expectation;
    expectation.m_bIsOdd = true;
    return expectation;
}

/// What the next request in the text is answered with; takes it from the text.
Expectation expectNext(std::string_view& text)
{
    const std::size_t end = text.find("\r\n\r\n");
    if (end == std::string_view::npos || end + 4 > kMostHeader) {
        return text.empty() ? Expectation() : oddOne();
    }
    std::string_view head = text.substr(0, end + 2);
    text.remove_prefix(end + 4);
    const std::string_view line = takeLine(head);
    const std::string_view method = line.substr(0, line.find(' '));
    const std::string_view rest = line.substr(std::min(method.size() + 1, line.size()));
    const std::string_view target = rest.substr(0, rest.find(' '));
    const std::string_view version = rest.substr(std::min(target.size() + 1, rest.size()));
    const auto fields = plainFields(head);
    const bool isNew = version == "HTTP/1.1";
    if (!isToken(method) || target.empty() || !isVisible(target) || (!isNew && version != "HTTP/1.0") || !fields ||
        fields->count("expect") != 0 || fields->count("connection") != 0 || fields->count("upgrade") != 0) {
        return oddOne();
    }
    Expectation expectation;
    expectation.m_tStatuses = faultsOf(method, isNew, *fields);
    if (!expectation.m_tStatuses.empty()) {
        return expectation;
    }
    std::string body;
    if (fields->count("transfer-encoding") != 0) {
        bool isOdd = false;
        const auto chunks = takeChunks(text, isOdd);
        if (!chunks) {
            return isOdd ? oddOne() : Expectation{{400}, {}};
        }
        body = *chunks;
    } else if (const auto length = only(*fields, "content-length")) {
        if (text.size() < std::stoull(*length)) {
            return {{400}, {}};
        }
        body = text.substr(0, std::stoull(*length));
        text.remove_prefix(body.size());
    }
    expectation.m_tStatuses = {200};
    expectation.m_sEcho = std::string(method) + " " + std::string(target) + " " + body;
    expectation.m_bIsLast = !isNew;
    return expectation;
}

struct Answer
{
    unsigned m_nStatus;
    std::string m_sBody;
};

/// Takes an answer from what the server sent, whose form must be right.
Answer takeAnswer(std::string_view& text, bool withoutBody)
{
    const std::size_t end = text.find("\r\n\r\n");
    require(text.starts_with("HTTP/1.1 ") && end != std::string_view::npos);
    const Answer status = {static_cast<unsigned>(std::stoul(std::string(text.substr(9, 3)))), {}};
    const std::string head = lower(text.substr(0, end + 2));
    text.remove_prefix(end + 4);
    if (status.m_nStatus == 100) {
        return status;
    }
    const std::size_t length = head.find("\r\ncontent-length: ");
    require(length != std::string::npos && head.find("\r\nx-content-type-options: nosniff\r\n") != std::string::npos);
    const std::size_t size = withoutBody ? 0 : std::stoul(head.substr(length + 18));
    require(text.size() >= size);
    const std::string_view body = text.substr(0, size);
    text.remove_prefix(size);
    return {status.m_nStatus, std::string(body)};
}

server::HttpAnswer echo(const server::HttpRequest& request)
{
    server::HttpAnswer answer;
    answer.m_sBody = request.m_sMethod + " " + request.m_sTarget + " " + request.m_sBody;
    return answer;
}

std::string received(int socket)
{
    std::string all;
    char bytes[16384];
    for (ssize_t count = 0; (count = recv(socket, bytes, sizeof bytes, MSG_DONTWAIT)) > 0;) {
        all.append(bytes, static_cast<std::size_t>(count));
    }
    return all;
}

/// All that the server sends to a client that says the text in pieces.
std::string converse(std::string_view text, unsigned seed)
{
    static server::HttpServer server({}, &echo, [](const server::Served&) {});
    int ends[2] = {-1, -1};
    require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) == 0);
    server.take(server::Descriptor(ends[0]));
    server::Descriptor client(ends[1]);
    std::string all;
    std::uint32_t random = seed;
    for (int idle = 0; !text.empty() && idle < 100; ++idle) {
        random = random * 1664525 + 1013904223;
        const std::size_t piece = seed == 0 ? text.size() : 1 + (random >> 16) % (seed % 16 == 0 ? 4096 : seed);
        const ssize_t sent = send(client.get(), text.data(), std::min(piece, text.size()), MSG_NOSIGNAL);
        if (sent > 0) {
            text.remove_prefix(static_cast<std::size_t>(sent));
            idle = 0;
        }
        server.step();
        all += received(client.get());
    }
    shutdown(client.get(), SHUT_WR);
    for (std::size_t left = 1, round = 0; left != 0; ++round) {
        require(round < 100'000);
        left = server.step();
        all += received(client.get());
    }
    return all;
}

/// Whether the request of that expectation asks for no body.
bool isHead(const Expectation& expectation)
{
    return expectation.m_sEcho.starts_with("HEAD ");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string sent = converse(text, data[0]);
    std::string_view answers = sent;
    for (bool isOver = false; !isOver;) {
        const Expectation expectation = expectNext(text);
        if (expectation.m_bIsOdd) {
            return 0;
        }
        isOver = expectation.m_bIsLast;
        if (expectation.m_tStatuses.empty()) {
            break;
        }
        const Answer answer = takeAnswer(answers, isHead(expectation));
        require(expectation.m_tStatuses.count(answer.m_nStatus) != 0);
        require(answer.m_nStatus != 200 || isHead(expectation) || answer.m_sBody == expectation.m_sEcho);
    }
    require(answers.empty());
    return 0;
}
