#pragma once

#include <string>
#include <string_view>

#include "vel/core/string.h"
#include "xmlplace.h"

namespace vel::xml_details {

/// What the bytes of a document are.
enum XmlEncoding
{
    kUtf8,
    kUtf8WithMark,
    kUtf16LittleEndian,
    kUtf16BigEndian,
    kUtf32,
    kUtf16WithoutMark
};

/// By the byte-order mark, or by the zero bytes that no UTF-8 document starts with.
XmlEncoding detectEncoding(std::string_view bytes) noexcept;

/// Why a document in that encoding is refused, or null.
const wchar_t* refusalOf(XmlEncoding encoding) noexcept;

/// Appends UTF-16 text with its byte-order mark to `out` as UTF-8 with a byte-order mark. Result: null, or what is
/// ill-formed about it; `out` then holds what came before that.
const wchar_t* appendUtf16AsUtf8(std::string_view bytes, XmlEncoding encoding, std::string& out);

/// Whether a document in that encoding may declare to be in `declared`. Compared without case.
bool agreesWith(XmlEncoding encoding, std::string_view declared) noexcept;

/// Whether the bytes themselves say what they are; a declaration then cannot.
bool hasMark(XmlEncoding encoding) noexcept;

/// What is wrong with a declaration that does not agree, and how to mend it: an error without a byte-order mark, a
/// remark with one.
String contradictionText(XmlEncoding encoding, std::string_view declared);

}  // namespace vel::xml_details
