#pragma once

#include <chrono>
#include <cstddef>

namespace server {

inline constexpr std::size_t kAnswerBytes = std::size_t{4} << 20;  ///< of an answer: 413

/// What a client may ask of the server; beyond each there is an answer, or a clean close where none can be given. The
/// times are points in time: what comes in or goes out meanwhile does not put them off.
struct Limits
{
    std::size_t m_nHeaderBytes = std::size_t{8} << 10;                   ///< request line and header: 431
    std::size_t m_nBodyBytes = std::size_t{1} << 20;                     ///< 413
    std::size_t m_nConnections = 512;                                    ///< 503
    std::size_t m_nAnswerBytes = kAnswerBytes;                           ///< 413
    std::size_t m_nOwnBytes = std::size_t{256} << 10;                    ///< of body and answer that each client has,
    std::size_t m_nSharedBytes = std::size_t{64} << 20;                  ///< and what all have beyond that: 503
    std::size_t m_nShortBody = std::size_t{16} << 10;                    ///< longer ones are worked at one by one,
    std::size_t m_nLongJobs = 16;                                        ///< and so many wait for that: 503
    std::chrono::milliseconds m_tHeaderTime = std::chrono::seconds(10);  ///< from the first byte to the last: 408
    std::chrono::milliseconds m_tBodyTime = std::chrono::seconds(20);    ///< 408
    std::chrono::milliseconds m_tIdleTime = std::chrono::seconds(30);    ///< between requests: closed
    std::chrono::milliseconds m_tWriteTime = std::chrono::seconds(20);   ///< for a client to take an answer: closed
    std::chrono::milliseconds m_tStallTime = std::chrono::seconds(1);  ///< without a byte, when memory is short: closed
    std::chrono::milliseconds m_tLingerTime = std::chrono::seconds(2);  ///< for it to read the last one: closed
    std::chrono::milliseconds m_tStopTime = std::chrono::seconds(5);    ///< for requests in flight when stopping
};

/// What a request's parts may hold.
inline constexpr std::size_t kCookieBytes = 1024;   ///< of the preferences' cookie: 431
inline constexpr std::size_t kOverrideLength = 64;  ///< characters of one preference: 400
inline constexpr std::size_t kQualityEntries = 64;  ///< of an Accept header; those behind are reported
inline constexpr std::size_t kParameters = 32;      ///< of a query: 400
inline constexpr std::size_t kTypedLength = 1024;   ///< characters of a typed date: 400
inline constexpr std::size_t kNumberLength = 64;    ///< characters of a number or a date to render: 400
inline constexpr std::size_t kLanguageLength = 64;  ///< characters of a requested language: 400
inline constexpr std::size_t kLines = 10000;        ///< to sort, and elements of all arrays of a body: 400
inline constexpr std::size_t kLineBytes = 65536;    ///< of a line to sort: 400
inline constexpr std::size_t kBodyKeys = 64;        ///< of all objects of a body: 400
inline constexpr std::size_t kBodyDepth = 8;        ///< of objects and arrays in one another: 400

}  // namespace server
