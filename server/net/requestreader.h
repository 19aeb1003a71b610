#pragma once

#include <boost/beast/core/flat_buffer.hpp>
#include <memory>
#include <optional>

#include "http.h"
#include "net/access.h"
#include "serverlimits.h"

namespace server {

/// Reads one HTTP/1.0 or 1.1 request out of bytes, however they are cut. It knows no connection. Its functions throw
/// std::bad_alloc only; the reader is of no use then.
///
/// Refused, with what stands in Limits and in accessFault(): 400 for what is no HTTP, for both a Content-Length and a
/// Transfer-Encoding, for Content-Lengths that differ; 501 for any Transfer-Encoding but exactly "chunked". What stands
/// behind a chunked body (its trailers) is dropped.
class RequestReader
{
public:
    /// Both must outlive it.
    RequestReader(const Limits& limits, const Access& access);
    ~RequestReader();
    RequestReader(const RequestReader&) = delete;
    RequestReader& operator=(const RequestReader&) = delete;

    enum State
    {
        kNeedsMore,
        kHasHeader,  ///< told once, where a body follows
        kComplete,
        kRefused
    };

    /// Reads on, and takes what it has read from the buffer. After kComplete and kRefused it is not called again.
    State read(boost::beast::flat_buffer& buffer);
    /// No more bytes will come: the refusal of the part that was read.
    Refusal cutOff() const;

    /// Whether a byte of the request was read.
    bool hasBegun() const noexcept;
    /// Behind the header: whether the client waits to be told that its body is wanted.
    bool isInvitationAwaited() const noexcept { return m_bInvitationAwaited; }
    /// What the body takes of memory.
    std::size_t bodyBytes() const noexcept;

    /// Of a complete request.
    bool isKeptAlive() const noexcept { return m_bKeepAlive; }
    HttpRequest takeRequest();
    /// Of a refused one.
    const Refusal& refusal() const noexcept { return *m_tRefusal; }

private:
    struct Parser;

    State refuse(Refusal refusal);
    State onHeader();
    std::size_t leastBytes() const;

    const Access& m_rAccess;
    std::size_t m_nMostHeaderBytes;
    std::size_t m_nHeaderBytes = 0;
    std::unique_ptr<Parser> m_pParser;
    HttpRequest m_tRequest;
    std::optional<Refusal> m_tRefusal;
    bool m_bHasHeader = false;
    bool m_bLacksBytes = false;  ///< the parser said so of what is in the buffer
    bool m_bKeepAlive = false;
    bool m_bInvitationAwaited = false;
};

}  // namespace server
