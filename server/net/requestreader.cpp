#include "net/requestreader.h"

#include <boost/beast/core/buffers_range.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <string>
#include <utility>
#include <vector>

namespace server {

namespace http = boost::beast::http;
using Error = boost::system::error_code;

namespace {

/// A body in a string that grows with what has come, not with what was announced.
struct GrowingBody
{
    using value_type = std::string;

    class reader  // NOLINT(readability-identifier-naming): the name that Beast asks for
    {
    public:
        template <bool isRequest, class Fields>
        reader(http::header<isRequest, Fields>&, value_type& body) : m_rBody(body)
        {}

        void init(const boost::optional<std::uint64_t>&, Error& error) { error = {}; }

        template <class Buffers>
        std::size_t put(const Buffers& buffers, Error& error)
        {
            error = {};
            const std::size_t before = m_rBody.size();
            for (const auto buffer : boost::beast::buffers_range_ref(buffers)) {
                m_rBody.append(static_cast<const char*>(buffer.data()), buffer.size());
            }
            return m_rBody.size() - before;
        }

        void finish(Error& error) { error = {}; }

    private:
        value_type& m_rBody;
    };
};

std::vector<std::string_view> valuesOf(const http::fields& fields, http::field name)
{
    std::vector<std::string_view> values;
    const auto [begin, end] = fields.equal_range(name);
    for (auto each = begin; each != end; ++each) {
        values.emplace_back(each->value().data(), each->value().size());
    }
    return values;
}

/// The fields of that name as one, joined by the separator.
std::string joined(const http::fields& fields, http::field name, const char* separator)
{
    std::string all;
    for (const std::string_view each : valuesOf(fields, name)) {
        all.append(all.empty() ? "" : separator).append(each);
    }
    return all;
}

std::string_view viewOf(boost::beast::string_view text)
{
    return {text.data(), text.size()};
}

HttpRequest requestOf(const http::request_header<>& header)
{
    HttpRequest request;
    request.m_sMethod = viewOf(header.method_string());
    request.m_sTarget = viewOf(header.target());
    request.m_sAcceptLanguage = joined(header, http::field::accept_language, ", ");
    request.m_sAcceptCharset = joined(header, http::field::accept_charset, ", ");
    request.m_sCookie = joined(header, http::field::cookie, "; ");
    request.m_sIfNoneMatch = joined(header, http::field::if_none_match, ", ");
    return request;
}

/// How long the body is must be said in one way, and in one that is understood: a proxy in front that reads it
/// otherwise would take a part of it for a request of its own.
std::optional<Refusal> framingFault(const http::request_header<>& header)
{
    const auto codings = valuesOf(header, http::field::transfer_encoding);
    if (codings.empty()) {
        return std::nullopt;
    }
    if (header.count(http::field::content_length) != 0 || header.version() < 11) {
        return Refusal{400, "bad-request", "The body's length is given in two ways, or in one that HTTP/1.0 has not."};
    }
    if (codings.size() != 1 || !boost::beast::iequals({codings.front().data(), codings.front().size()}, "chunked")) {
        return Refusal{501, "unknown-coding", "The only Transfer-Encoding that is taken is chunked."};
    }
    return std::nullopt;
}

Refusal refusalOf(const Error& error)
{
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
        return {431, "header-too-large", "The request line and the header are too large."};
    }
    if (error == http::error::body_limit) {
        return {413, "body-too-large", "The body is too large."};
    }
    return {400, "bad-request", "The request is no HTTP request that can be read."};
}

}  // namespace

struct RequestReader::Parser
{
    http::request_parser<GrowingBody> m_tParser;
};

RequestReader::RequestReader(const Limits& limits, const Access& access)
    : m_rAccess(access), m_nMostHeaderBytes(limits.m_nHeaderBytes), m_pParser(std::make_unique<Parser>())
{
    m_pParser->m_tParser.header_limit(static_cast<std::uint32_t>(limits.m_nHeaderBytes));
    m_pParser->m_tParser.body_limit(limits.m_nBodyBytes);
}

RequestReader::~RequestReader() = default;

RequestReader::State RequestReader::read(boost::beast::flat_buffer& buffer)
{
    auto& parser = m_pParser->m_tParser;
    while (!parser.is_done()) {
        if (buffer.size() == 0 || (m_bLacksBytes && buffer.size() < leastBytes())) {
            return kNeedsMore;
        }
        Error error;
        const std::size_t taken = parser.put(buffer.data(), error);
        buffer.consume(taken);
        const bool needsMore = error == http::error::need_more;
        m_bLacksBytes = needsMore;
        if (error && !needsMore) {
            return refuse(refusalOf(error));
        }
        // The parser's own limit does not count lines that come one by one.
        m_nHeaderBytes += m_bHasHeader ? 0 : taken;
        const std::size_t waiting = parser.is_header_done() ? 0 : buffer.size();
        if (m_nHeaderBytes + waiting > m_nMostHeaderBytes || buffer.size() == buffer.max_size()) {
            return refuse(refusalOf(http::error::header_limit));
        }
        if (needsMore) {
            return kNeedsMore;
        }
        if (parser.is_header_done() && !m_bHasHeader) {
            if (const State state = onHeader(); state != kNeedsMore) {
                return state;
            }
        }
    }
    return kComplete;
}

/// Beast takes it for granted that whoever calls it again within the last chunk has the five bytes of "0\r\n\r\n". A
/// chunked body that can be read has as many before it any time, so waiting for them holds nobody up.
std::size_t RequestReader::leastBytes() const
{
    constexpr std::size_t kLastChunkBytes = 5;
    return m_bHasHeader && m_pParser->m_tParser.chunked() ? kLastChunkBytes : 1;
}

/// All that counts of the header is taken here: what comes behind the body is not of it.
RequestReader::State RequestReader::onHeader()
{
    const auto& parser = m_pParser->m_tParser;
    const auto& header = parser.get().base();
    m_bHasHeader = true;
    if (auto fault = framingFault(header)) {
        return refuse(*std::move(fault));
    }
    const Claims claims = {viewOf(header.method_string()), valuesOf(header, http::field::host),
                           valuesOf(header, http::field::origin), valuesOf(header, http::field::content_type)};
    if (auto fault = accessFault(claims, m_rAccess)) {
        return refuse(*std::move(fault));
    }
    m_tRequest = requestOf(header);
    m_bKeepAlive = parser.get().keep_alive();
    m_bInvitationAwaited = header.version() >= 11 && boost::beast::iequals(header[http::field::expect], "100-continue");
    return parser.is_done() ? kNeedsMore : kHasHeader;
}

Refusal RequestReader::cutOff() const
{
    return {400, "incomplete-request", "The request ended before it was complete."};
}

bool RequestReader::hasBegun() const noexcept
{
    return m_pParser->m_tParser.got_some();
}

std::size_t RequestReader::bodyBytes() const noexcept
{
    return m_pParser->m_tParser.get().body().capacity();
}

HttpRequest RequestReader::takeRequest()
{
    m_tRequest.m_sBody = std::move(m_pParser->m_tParser.get().body());
    return std::move(m_tRequest);
}

RequestReader::State RequestReader::refuse(Refusal refusal)
{
    m_tRefusal.emplace(std::move(refusal));
    return kRefused;
}

}  // namespace server
