#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace reference {

/// One encoding as the WHATWG Encoding Standard defines it, character by character: slow and obvious, from the tables
/// in webencodings/.
class WebEncoding
{
public:
    virtual ~WebEncoding() = default;

    /// The bytes of a text that consists of this character; nothing when the encoding lacks it.
    virtual std::optional<std::string> encode(char32_t character) const = 0;
    /// The characters that a browser reads in these bytes; nothing when one of them is no part of a character.
    std::optional<std::u32string> decode(const std::string& bytes) const;

protected:
    /// Reads one character (or two, in Big5) at `place` and moves it behind; false for a fault.
    virtual bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const = 0;
};

/// The encodings' names by label, all in lower case.
const std::map<std::string, std::string>& webLabels();

/// The encoding of that name, for one that browsers write and read: throws std::runtime_error for another.
const WebEncoding& webEncoding(const std::string& name);

}  // namespace reference
