#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "answers/json.h"

namespace cli {

using answers::Json;

/// An answer for people: names and values, in order.
using Facts = std::vector<std::pair<std::string, std::string>>;

/// Standard output: JSON objects, one a line, or the same facts for people. Buffered; flush() before waiting for
/// anything. Throws DataError when it cannot be written and BrokenPipe when nobody reads it.
class Output
{
public:
    explicit Output(bool json) noexcept : m_bJson(json) {}

    bool isJson() const noexcept { return m_bJson; }
    /// Answers of a batch stand on one line each for people too.
    void setBatch() noexcept { m_bBatch = true; }
    bool isBatch() const noexcept { return m_bBatch; }

    /// One JSON object, or its facts, a line each ("name: value"; in a batch on one line with tabs between them).
    void answer(const Json& json, const Facts& facts);
    /// One JSON object, or its line for people.
    void row(const Json& json, std::string_view line);
    /// Text as it is.
    void text(std::string_view text);
    void flush();

private:
    void endLine();
    static void write(std::string_view text);

    std::string m_sBuffer;
    bool m_bJson;
    bool m_bBatch = false;
};

}  // namespace cli
