#include "check/webencodings.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace cli {

namespace {

struct Row
{
    std::string_view m_sName;
    std::string_view m_sConverters;  // separated by blanks; an option in a converter's name has none
    std::string_view m_sLabels;      // separated by blanks, in lower case
};

// The labels of the WHATWG Encoding Standard. The converters are those whose bytes browsers read as they are meant, but
// for a few rare characters.
constexpr Row kRows[] = {
    {"utf-8", "UTF-8", "unicode-1-1-utf-8 utf-8 utf8"},
    {"ibm866", "ibm-866_P100-1995", "866 cp866 csibm866 ibm866"},
    {"iso-8859-2", "ibm-912_P100-1995",
     "csisolatin2 iso-8859-2 iso-ir-101 iso8859-2 iso88592 iso_8859-2 iso_8859-2:1987 l2 latin2"},
    {"iso-8859-3", "ibm-913_P100-2000",
     "csisolatin3 iso-8859-3 iso-ir-109 iso8859-3 iso88593 iso_8859-3 iso_8859-3:1988 l3 latin3"},
    {"iso-8859-4", "ibm-914_P100-1995",
     "csisolatin4 iso-8859-4 iso-ir-110 iso8859-4 iso88594 iso_8859-4 iso_8859-4:1988 l4 latin4"},
    {"iso-8859-5", "ibm-915_P100-1995",
     "csisolatincyrillic cyrillic iso-8859-5 iso-ir-144 iso8859-5 iso88595 iso_8859-5 iso_8859-5:1988"},
    {"iso-8859-6", "ibm-1089_P100-1995",
     "arabic asmo-708 csiso88596e csiso88596i csisolatinarabic ecma-114 iso-8859-6 iso-8859-6-e "
     "iso-8859-6-i iso-ir-127 iso8859-6 iso88596 iso_8859-6 iso_8859-6:1987"},
    {"iso-8859-7", "ibm-9005_X110-2007",
     "csisolatingreek ecma-118 elot_928 greek greek8 iso-8859-7 iso-ir-126 iso8859-7 iso88597 iso_8859-7 "
     "iso_8859-7:1987 sun_eu_greek"},
    {"iso-8859-8", "ibm-5012_P100-1999",
     "csiso88598e csisolatinhebrew hebrew iso-8859-8 iso-8859-8-e iso-ir-138 iso8859-8 iso88598 iso_8859-8 "
     "iso_8859-8:1988 visual"},
    {"iso-8859-8-i", "ibm-5012_P100-1999", "csiso88598i iso-8859-8-i logical"},
    {"iso-8859-10", "iso-8859_10-1998", "csisolatin6 iso-8859-10 iso-ir-157 iso8859-10 iso885910 l6 latin6"},
    {"iso-8859-13", "ibm-921_P100-1995", "iso-8859-13 iso8859-13 iso885913"},
    {"iso-8859-14", "iso-8859_14-1998", "iso-8859-14 iso8859-14 iso885914"},
    {"iso-8859-15", "ibm-923_P100-1998", "csisolatin9 iso-8859-15 iso8859-15 iso885915 iso_8859-15 l9"},
    {"iso-8859-16", "", "iso-8859-16"},
    {"koi8-r", "ibm-878_P100-1996", "cskoi8r koi koi8 koi8-r koi8_r"},
    {"koi8-u", "ibm-1168_P100-2002", "koi8-ru koi8-u"},
    {"macintosh", "macos-0_2-10.2", "csmacintosh mac macintosh x-mac-roman"},
    {"windows-874", "ibm-1162_P100-1999", "dos-874 iso-8859-11 iso8859-11 iso885911 tis-620 windows-874"},
    {"windows-1250", "ibm-5346_P100-1998", "cp1250 windows-1250 x-cp1250"},
    {"windows-1251", "ibm-5347_P100-1998", "cp1251 windows-1251 x-cp1251"},
    {"windows-1252", "ibm-5348_P100-1997",
     "ansi_x3.4-1968 ascii cp1252 cp819 csisolatin1 ibm819 iso-8859-1 iso-ir-100 iso8859-1 iso88591 "
     "iso_8859-1 iso_8859-1:1987 l1 latin1 us-ascii windows-1252 x-cp1252"},
    {"windows-1253", "ibm-5349_P100-1998", "cp1253 windows-1253 x-cp1253"},
    {"windows-1254", "ibm-5350_P100-1998",
     "cp1254 csisolatin5 iso-8859-9 iso-ir-148 iso8859-9 iso88599 iso_8859-9 iso_8859-9:1989 l5 latin5 "
     "windows-1254 x-cp1254"},
    {"windows-1255", "ibm-9447_P100-2002", "cp1255 windows-1255 x-cp1255"},
    {"windows-1256", "ibm-9448_X100-2005", "cp1256 windows-1256 x-cp1256"},
    {"windows-1257", "ibm-9449_P100-2002", "cp1257 windows-1257 x-cp1257"},
    {"windows-1258", "ibm-5354_P100-1998", "cp1258 windows-1258 x-cp1258"},
    {"x-mac-cyrillic", "macos-7_3-10.2", "x-mac-cyrillic x-mac-ukrainian"},
    {"gbk", "ibm-1386_P100-2001 windows-936-2000",
     "chinese csgb2312 csiso58gb231280 gb2312 gb_2312 gb_2312-80 gbk iso-ir-58 x-gbk"},
    {"gb18030", "gb18030", "gb18030"},
    {"big5", "ibm-1375_P100-2008 ibm-5471_P100-2006", "big5 big5-hkscs cn-big5 csbig5 x-x-big5"},
    {"euc-jp", "euc-jp-2007", "cseucpkdfmtjapanese euc-jp x-euc-jp"},
    {"iso-2022-jp", "ISO_2022,locale=ja,version=0", "csiso2022jp iso-2022-jp"},
    {"shift_jis", "ibm-943_P15A-2003", "csshiftjis ms932 ms_kanji shift-jis shift_jis sjis windows-31j x-sjis"},
    {"euc-kr", "windows-949-2000",
     "cseuckr csksc56011987 euc-kr iso-ir-149 korean ks_c_5601-1987 ks_c_5601-1989 ksc5601 ksc_5601 "
     "windows-949"},
    {"replacement", "", "csiso2022kr hz-gb-2312 iso-2022-cn iso-2022-cn-ext iso-2022-kr"},
    {"utf-16be", "UTF-16BE", "utf-16be"},
    {"utf-16le", "UTF-16LE UTF-16", "utf-16 utf-16le"},
    {"x-user-defined", "", "x-user-defined"},
};

// What IANA registers beside them, as far as there is a converter for it.
constexpr std::string_view kOtherLabels =
    "437 850 851 852 855 857 860 861 862 863 865 869 adobe-standard-encoding ansi_x3.4-1986 bocu-1 "
    "ccsid00858 ccsid01140 ccsid01141 ccsid01142 ccsid01143 ccsid01144 ccsid01145 ccsid01146 ccsid01147 "
    "ccsid01148 ccsid01149 cesu-8 cp-ar cp-gr cp-is cp00858 cp01140 cp01141 cp01142 cp01143 cp01144 "
    "cp01145 cp01146 cp01147 cp01148 cp01149 cp1026 cp273 cp280 cp284 cp285 cp290 cp297 cp367 cp420 cp424 "
    "cp437 cp500 cp775 cp850 cp851 cp852 cp855 cp857 cp860 cp861 cp862 cp863 cp864 cp865 cp868 cp869 "
    "cp870 cp871 cp918 cp936 csadobestandardencoding csascii csbocu-1 cshproman8 csibm037 csibm1026 "
    "csibm273 csibm277 csibm278 csibm280 csibm284 csibm285 csibm290 csibm297 csibm420 csibm424 csibm500 "
    "csibm855 csibm857 csibm860 csibm861 csibm863 csibm864 csibm865 csibm868 csibm869 csibm870 csibm871 "
    "csibm918 csibmthai csiso2022jp2 csjisencoding cspc775baltic cspc850multilingual cspc851 "
    "cspc862latinhebrew cspc8codepage437 cspcp852 cswindows31j ebcdic-cp-ar1 ebcdic-cp-ar2 ebcdic-cp-be "
    "ebcdic-cp-ca ebcdic-cp-ch ebcdic-cp-dk ebcdic-cp-es ebcdic-cp-fi ebcdic-cp-fr ebcdic-cp-gb "
    "ebcdic-cp-he ebcdic-cp-is ebcdic-cp-it ebcdic-cp-nl ebcdic-cp-no ebcdic-cp-roece ebcdic-cp-se "
    "ebcdic-cp-us ebcdic-cp-wt ebcdic-cp-yu ebcdic-de-273+euro ebcdic-dk-277+euro ebcdic-es-284+euro "
    "ebcdic-fi-278+euro ebcdic-fr-297+euro ebcdic-gb-285+euro ebcdic-international-500+euro "
    "ebcdic-is-871+euro ebcdic-it-280+euro ebcdic-jp-kana ebcdic-no-277+euro ebcdic-se-278+euro "
    "ebcdic-us-37+euro extended_unix_code_packed_format_for_japanese hp-roman8 ibm-thai ibm00858 ibm01140 "
    "ibm01141 ibm01142 ibm01143 ibm01144 ibm01145 ibm01146 ibm01147 ibm01148 ibm01149 ibm037 ibm1026 "
    "ibm1047 ibm273 ibm277 ibm278 ibm280 ibm284 ibm285 ibm290 ibm297 ibm367 ibm420 ibm424 ibm437 ibm500 "
    "ibm775 ibm850 ibm851 ibm852 ibm855 ibm857 ibm860 ibm861 ibm862 ibm863 ibm864 ibm865 ibm868 ibm869 "
    "ibm870 ibm871 ibm918 iso-10646-ucs-2 iso-10646-ucs-4 iso-2022-jp-2 iso-celtic iso-ir-199 iso-ir-6 "
    "iso646-us iso_646.irv:1991 iso_8859-10:1992 iso_8859-14:1998 jis_encoding l8 latin-9 latin8 ms936 "
    "pc-multilingual-850+euro r8 roman8 scsu us utf-32 utf-32be utf-32le utf-7 windows-936";

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

using EncodingsByLabel = std::unordered_map<std::string_view, WebEncoding>;

EncodingsByLabel readRows()
{
    EncodingsByLabel encodings;
    for (const Row& row : kRows) {
        for (const std::string_view label : wordsOf(row.m_sLabels)) {
            encodings.emplace(label, WebEncoding{row.m_sName, wordsOf(row.m_sConverters)});
        }
    }
    // Its 128 characters are right under either reading of the label.
    for (const char* label : {"us-ascii", "ascii", "ansi_x3.4-1968"}) {
        encodings.at(label).m_vConverters.push_back("US-ASCII");
    }
    return encodings;
}

/// In lower case; empty when there is another character than printable ASCII in it, as in no label.
std::string lowerCase(std::wstring_view label)
{
    std::string text;
    for (const wchar_t each : label) {
        if (each <= L' ' || each > L'~') {
            return {};
        }
        text.push_back(static_cast<char>(each >= L'A' && each <= L'Z' ? each - L'A' + L'a' : each));
    }
    return text;
}

}  // namespace

const WebEncoding* webEncodingOf(std::wstring_view label)
{
    static const EncodingsByLabel s_encodings = readRows();
    const auto found = s_encodings.find(lowerCase(label));
    return found == s_encodings.end() ? nullptr : &found->second;
}

bool isRegisteredLabel(std::wstring_view label)
{
    static const std::vector<std::string_view> s_words = wordsOf(kOtherLabels);
    static const std::unordered_set<std::string_view> s_others(s_words.begin(), s_words.end());
    return webEncodingOf(label) != nullptr || s_others.count(lowerCase(label)) != 0;
}

}  // namespace cli
