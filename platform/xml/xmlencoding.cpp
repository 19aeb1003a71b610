#include "xmlencoding.h"

#include <algorithm>
#include <cstdint>

namespace vel::xml_details {

namespace {

using namespace std::string_view_literals;

/// One UTF-16 unit at an even offset.
std::uint32_t unitAt(std::string_view bytes, std::size_t offset, bool isBigEndian) noexcept
{
    const std::uint32_t first = static_cast<unsigned char>(bytes[offset]);
    const std::uint32_t second = static_cast<unsigned char>(bytes[offset + 1]);
    return isBigEndian ? first << 8 | second : second << 8 | first;
}

void appendScalar(std::uint32_t value, std::string& out)
{
    const auto continuation = [&](unsigned shift) { return static_cast<char>(0x80U | (value >> shift & 0x3FU)); };
    if (value < 0x80) {
        out.push_back(static_cast<char>(value));
    } else if (value < 0x800) {
        out.push_back(static_cast<char>(0xC0U | value >> 6));
        out.push_back(continuation(0));
    } else if (value < 0x10000) {
        out.push_back(static_cast<char>(0xE0U | value >> 12));
        out.push_back(continuation(6));
        out.push_back(continuation(0));
    } else {
        out.push_back(static_cast<char>(0xF0U | value >> 18));
        out.push_back(continuation(12));
        out.push_back(continuation(6));
        out.push_back(continuation(0));
    }
}

bool isHighSurrogate(std::uint32_t unit) noexcept
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(std::uint32_t unit) noexcept
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char lowerAscii(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool equalsNoCase(std::string_view a, std::string_view lower) noexcept
{
    return std::equal(a.begin(), a.end(), lower.begin(), lower.end(),
                      [](char x, char y) { return lowerAscii(x) == y; });
}

const wchar_t* nameOf(XmlEncoding encoding) noexcept
{
    return encoding == kUtf16LittleEndian ? L"UTF-16LE" : encoding == kUtf16BigEndian ? L"UTF-16BE" : L"UTF-8";
}

}  // namespace

XmlEncoding detectEncoding(std::string_view bytes) noexcept
{
    if (bytes.starts_with("\xFF\xFE\0\0"sv) || bytes.starts_with("\0\0\xFE\xFF"sv)) {
        return kUtf32;
    }
    if (bytes.starts_with("\xFF\xFE"sv)) {
        return kUtf16LittleEndian;
    }
    if (bytes.starts_with("\xFE\xFF"sv)) {
        return kUtf16BigEndian;
    }
    if (bytes.starts_with(kUtf8Mark)) {
        return kUtf8WithMark;
    }
    // The parser would take such a start for UTF-16 whatever it is told.
    return bytes.substr(0, 2).find('\0') != std::string_view::npos ? kUtf16WithoutMark : kUtf8;
}

const wchar_t* refusalOf(XmlEncoding encoding) noexcept
{
    switch (encoding) {
    case kUtf32:
        return L"the file is in UTF-32, which is not read: save it as UTF-8";
    case kUtf16WithoutMark:
        return L"the file starts with a zero byte, as UTF-16 without a byte-order mark does: save it as UTF-8, or as "
               L"UTF-16 with a byte-order mark";
    default:
        return nullptr;
    }
}

const wchar_t* appendUtf16AsUtf8(std::string_view bytes, XmlEncoding encoding, std::string& out)
{
    const bool isBigEndian = encoding == kUtf16BigEndian;
    const std::size_t end = bytes.size() & ~std::size_t{1};
    out.reserve(out.size() + bytes.size());
    // The mark itself is a unit like any other: it becomes the UTF-8 mark.
    for (std::size_t i = 0; i < end; i += 2) {
        std::uint32_t value = unitAt(bytes, i, isBigEndian);
        if (isHighSurrogate(value) && i + 2 < end && isLowSurrogate(unitAt(bytes, i + 2, isBigEndian))) {
            i += 2;
            value = 0x10000 + ((value - 0xD800) << 10) + (unitAt(bytes, i, isBigEndian) - 0xDC00);
        } else if (isHighSurrogate(value) || isLowSurrogate(value)) {
            return L"half of a surrogate pair stands alone, the text is not UTF-16: save the file as UTF-8";
        }
        appendScalar(value, out);
    }
    return end == bytes.size() ? nullptr : L"the UTF-16 text ends within a character: save the file again, as UTF-8";
}

bool agreesWith(XmlEncoding encoding, std::string_view declared) noexcept
{
    switch (encoding) {
    case kUtf8:
    case kUtf8WithMark:
        return equalsNoCase(declared, "utf-8") || equalsNoCase(declared, "us-ascii");
    case kUtf16LittleEndian:
        return equalsNoCase(declared, "utf-16") || equalsNoCase(declared, "utf-16le");
    case kUtf16BigEndian:
        return equalsNoCase(declared, "utf-16") || equalsNoCase(declared, "utf-16be");
    default:
        return false;
    }
}

bool hasMark(XmlEncoding encoding) noexcept
{
    return encoding == kUtf8WithMark || encoding == kUtf16LittleEndian || encoding == kUtf16BigEndian;
}

String contradictionText(XmlEncoding encoding, std::string_view declared)
{
    String text(L"the encoding declaration says \"");
    text += stringFromUtf8(declared).value_or(String());
    text += L"\", but the file ";
    text += hasMark(encoding) ? L"has the byte-order mark of " : L"has no byte-order mark and is read as ";
    text += nameOf(encoding);
    text += hasMark(encoding) ? L", which decides: remove the encoding declaration"
                              : L": save the file as UTF-8 or remove the encoding declaration";
    return text;
}

}  // namespace vel::xml_details
