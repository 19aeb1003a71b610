#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "slowparsedatetime.h"
#include "webi18n/parsedatetime.h"

namespace datestesting {

/// A locale of a definition that holds the order, the separators and the markers.
vel::Locale makeLocale(const reference::Conventions& conventions);

/// What a parse gave: the fields found and the value behind them.
struct Parsed
{
    unsigned m_nFound = 0;
    vel::DateTime m_tValue;
};

/// Parses a copy in a block of exactly its size, so that a sanitizer sees a read past the end.
Parsed parseTyped(std::wstring_view text, const vel::Locale& locale, unsigned expected);
/// The same for an XML value, into a value whose fields all held something before.
struct XmlParsed
{
    vel::ParseDateTime::XmlType m_eForm = vel::ParseDateTime::kInvalid;
    vel::DateTime m_tValue;
    bool m_bUntouched = false;
};
XmlParsed parseXml(std::wstring_view text);

/// The fields of the mask with their values: "Y2005 M12 D31 h15 m0 s0 f500"; "error" for an empty mask.
std::string describe(unsigned fields, const vel::DateTime& value);
/// "XmlDate Y2005 M12 D31"; "invalid", "untouched".
std::string describe(const XmlParsed& parsed);
/// The text as a failing test shows it, what is not ASCII as \x{...}.
std::string show(std::wstring_view text);

/// The fields that a form has, as a mask; the fraction of a time counts when it is not 0.
unsigned fieldsOf(vel::ParseDateTime::XmlType form, const vel::DateTime& value);
/// Empty when the mask names exactly the fields that are set and each is in its range; else what is wrong.
std::string brokenLaw(unsigned found, const vel::DateTime& value, bool anyFraction);

/// The sanitizers cost a factor of ten and more: exhaustive tests use shorter texts.
constexpr bool isSanitized()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return true;
#else
    return false;
#endif
#else
    return false;
#endif
}

#if defined(__OPTIMIZE__)
constexpr bool kOptimized = true;
#else
constexpr bool kOptimized = false;
#endif

}  // namespace datestesting
