#include "xmlfault.h"

#include <algorithm>
#include <string>

namespace vel::xml_details {

namespace {

/// The element that misses its end, with the line of its start.
String openElementText(const XmlElementNode& open)
{
    return String(L"<") + open.m_pName->m_sQualified + L">, which starts in line " + decimalString(open.m_nLine);
}

bool startsIllFormed(std::string_view rest)
{
    wchar_t character[4];
    std::size_t errorOffset = 0;
    decodeUtf8(rest.substr(0, 4), character, &errorOffset);
    return errorOffset == 0;
}

/// XML allows no control characters but tab, line feed and carriage return, and not U+FFFE and U+FFFF.
bool startsWithForbidden(std::string_view rest)
{
    const unsigned char first = static_cast<unsigned char>(rest.front());
    const bool isControl = first < 0x20 && first != '\t' && first != '\n' && first != '\r';
    return isControl || rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF");
}

String describeInvalidToken(std::string_view rest)
{
    if (rest.empty()) {
        return L"not well-formed at the end of the file: the file may be cut off";
    }
    if (startsIllFormed(rest)) {
        return L"this is not UTF-8: save the file as UTF-8";
    }
    if (startsWithForbidden(rest)) {
        return L"a character that XML does not allow: remove it";
    }
    return L"not well-formed: check the tag, quotes or \"&\" here (write \"&lt;\" and \"&amp;\" for the characters)";
}

String describeMissingEnd(const XmlElementNode* open)
{
    if (open == nullptr) {
        return L"there is no root element: add one";
    }
    return String(L"the file ends within ") + openElementText(*open) + L": add the end tag";
}

String describeWrongEnd(const XmlElementNode* open)
{
    if (open == nullptr) {
        return L"an end tag without a start tag: remove it";
    }
    return String(L"this is not the end tag of ") + openElementText(*open) + L": correct one of the two";
}

struct Fault
{
    XML_Error m_eCode;
    const wchar_t* m_pText;
};

constexpr Fault kFaults[] = {
    {XML_ERROR_SYNTAX, L"no XML can stand here: check what is before the root element"},
    {XML_ERROR_UNCLOSED_TOKEN, L"what starts here does not end: close the tag, comment or quote"},
    {XML_ERROR_PARTIAL_CHAR, L"the file ends within a character: it is cut off, save it again as UTF-8"},
    {XML_ERROR_DUPLICATE_ATTRIBUTE, L"an attribute is given twice: remove one of the two"},
    {XML_ERROR_JUNK_AFTER_DOC_ELEMENT, L"the root element has ended: put everything into one root element"},
    {XML_ERROR_UNDEFINED_ENTITY,
     L"only the entities lt, gt, amp, quot and apos are known: write the character itself, or \"&amp;\" for \"&\""},
    {XML_ERROR_BAD_CHAR_REF, L"a reference to a character that XML does not allow: remove it"},
    {XML_ERROR_MISPLACED_XML_PI, L"the XML declaration may only stand at the very start: remove what is before it"},
    {XML_ERROR_UNCLOSED_CDATA_SECTION, L"the file ends within a CDATA section: close it with \"]]>\""},
    {XML_ERROR_XML_DECL, L"the XML declaration is not well-formed: write <?xml version=\"1.0\" encoding=\"UTF-8\"?>"},
};

String describeOther(XML_Error code)
{
    const XML_LChar* const text = XML_ErrorString(code);
    return String(L"not well-formed: ") + stringFromUtf8(text == nullptr ? "unknown error" : text).value_or(String());
}

}  // namespace

String describeFault(XML_Error code, std::string_view rest, const XmlElementNode* open)
{
    switch (code) {
    case XML_ERROR_INVALID_TOKEN:
        return describeInvalidToken(rest);
    case XML_ERROR_NO_ELEMENTS:
        return describeMissingEnd(open);
    case XML_ERROR_TAG_MISMATCH:
        return describeWrongEnd(open);
    default:
        break;
    }
    const Fault* const known =
        std::find_if(std::begin(kFaults), std::end(kFaults), [&](const Fault& fault) { return fault.m_eCode == code; });
    return known == std::end(kFaults) ? describeOther(code) : String(known->m_pText);
}

}  // namespace vel::xml_details
