#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace cli {

/// Standard input as wide text, in pieces of whole characters: memory does not grow with the input.
class TextStream
{
public:
    /// `beforeWaiting` is called before each time that reading may have to wait.
    explicit TextStream(std::function<void()> beforeWaiting);

    /// Replaces `text` by the next piece; false at the end. Throws DataError when reading fails, and UsageError, which
    /// names the byte offset from the start, behind the last piece before what is no UTF-8.
    bool next(std::wstring& text);

private:
    bool readMore();
    [[noreturn]] void refuse() const;

    std::function<void()> m_tBeforeWaiting;
    std::string m_sBytes;        // what is read and not yet decoded
    std::size_t m_nDecoded = 0;  // bytes before them
};

}  // namespace cli
