#include "vel/core/utf8.h"

#include <cstdint>
#include <cstring>

namespace vel {

namespace {

constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
constexpr std::wstring_view::value_type kReplacement = 0xFFFD;

/// How many continuation bytes follow the lead byte, and the least value that needs that many; 0 for no lead byte.
struct Lead
{
    unsigned m_nContinuations;
    std::uint32_t m_nLeast;
    std::uint32_t m_nBits;
};

Lead classifyLead(unsigned char byte) noexcept
{
    if ((byte & 0xE0U) == 0xC0U) {
        return {1, 0x80, byte & 0x1FU};
    }
    if ((byte & 0xF0U) == 0xE0U) {
        return {2, 0x800, byte & 0x0FU};
    }
    if ((byte & 0xF8U) == 0xF0U) {
        return {3, 0x10000, byte & 0x07U};
    }
    return {0, 0, 0};
}

bool isScalarValue(std::uint32_t value) noexcept
{
    return value < 0xD800 || (value >= 0xE000 && value <= 0x10FFFF);
}

/// Reads one multi-byte sequence; false when it is ill-formed. `length` receives its bytes.
bool decodeSequence(const unsigned char* in, std::size_t available, std::uint32_t& value, std::size_t& length) noexcept
{
    const Lead lead = classifyLead(*in);
    length = lead.m_nContinuations + 1;
    if (lead.m_nContinuations == 0 || length > available) {
        return false;
    }
    value = lead.m_nBits;
    for (std::size_t i = 1; i < length; ++i) {
        if ((in[i] & 0xC0U) != 0x80U) {
            return false;
        }
        value = value << 6 | (in[i] & 0x3FU);
    }
    return value >= lead.m_nLeast && isScalarValue(value);
}

/// Widens the bytes at the front that are ASCII, eight at a time; returns how many.
std::size_t widenAscii(const unsigned char* in, std::size_t size, wchar_t* out) noexcept
{
    std::size_t done = 0;
    while (size - done >= 8) {
        std::uint64_t block = 0;
        std::memcpy(&block, in + done, 8);
        if ((block & kHighBits) != 0) {
            break;
        }
        for (std::size_t i = 0; i < 8; ++i) {
            out[done + i] = static_cast<wchar_t>(in[done + i]);
        }
        done += 8;
    }
    while (done < size && in[done] < 0x80) {
        out[done] = static_cast<wchar_t>(in[done]);
        ++done;
    }
    return done;
}

void appendScalar(std::uint32_t value, std::string& out)
{
    if (value < 0x80) {
        out.push_back(static_cast<char>(value));
        return;
    }
    char bytes[4];
    const std::size_t length = value < 0x800 ? 2 : value < 0x10000 ? 3 : 4;
    for (std::size_t i = length - 1; i > 0; --i) {
        bytes[i] = static_cast<char>(0x80U | (value & 0x3FU));
        value >>= 6;
    }
    const std::uint32_t mark = length == 2 ? 0xC0U : length == 3 ? 0xE0U : 0xF0U;
    bytes[0] = static_cast<char>(mark | value);
    out.append(bytes, length);
}

}  // namespace

std::size_t decodeUtf8(std::string_view utf8, wchar_t* out, std::size_t* errorOffset) noexcept
{
    const unsigned char* in = reinterpret_cast<const unsigned char*>(utf8.data());
    std::size_t read = 0;
    std::size_t written = 0;
    *errorOffset = std::string_view::npos;
    while (read < utf8.size()) {
        const std::size_t ascii = widenAscii(in + read, utf8.size() - read, out + written);
        read += ascii;
        written += ascii;
        if (read == utf8.size()) {
            break;
        }
        std::uint32_t value = 0;
        std::size_t length = 0;
        if (!decodeSequence(in + read, utf8.size() - read, value, length)) {
            *errorOffset = read;
            break;
        }
        out[written++] = static_cast<wchar_t>(value);
        read += length;
    }
    return written;
}

std::optional<std::size_t> appendUtf8AsWide(std::string_view utf8, std::wstring& out)
{
    const std::size_t before = out.size();
    out.resize(before + utf8.size());
    std::size_t errorOffset = 0;
    const std::size_t written = decodeUtf8(utf8, out.data() + before, &errorOffset);
    out.resize(before + written);
    return errorOffset == std::string_view::npos ? std::nullopt : std::optional<std::size_t>(errorOffset);
}

std::optional<std::size_t> appendWideAsUtf8(std::wstring_view wide, std::string& out)
{
    out.reserve(out.size() + wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const std::uint32_t value = static_cast<std::uint32_t>(wide[i]);
        if (!isScalarValue(value)) {
            return i;
        }
        appendScalar(value, out);
    }
    return std::nullopt;
}

std::string toUtf8Lossy(std::wstring_view wide)
{
    std::string out;
    out.reserve(wide.size());
    for (const wchar_t character : wide) {
        const std::uint32_t value = static_cast<std::uint32_t>(character);
        appendScalar(isScalarValue(value) ? value : static_cast<std::uint32_t>(kReplacement), out);
    }
    return out;
}

}  // namespace vel
