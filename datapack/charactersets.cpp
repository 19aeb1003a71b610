#include "charactersets.h"

#include "xmlwriter.h"

namespace datapack {

namespace {

constexpr bool kWeb = true;
constexpr bool kLegacy = false;

}  // namespace

const std::vector<CharacterSetEntry>& characterSets()
{
    // Left out on purpose: utf-7 and the compressed forms (text that looks harmless becomes markup), hz-gb-2312,
    // iso-2022-kr and iso-2022-cn (browsers refuse them for the same reason), iso-8859-16 (ICU has no table of it).
    static const std::vector<CharacterSetEntry> s_sets = {
        {"utf-8", {"UTF-8"}, kWeb},
        // Browsers read both in the order that the label says; a response should be UTF-8 instead.
        {"utf-16le", {"UTF-16LE"}, kLegacy},
        {"utf-16be", {"UTF-16BE"}, kLegacy},

        // Western Europe. The labels of ASCII and Latin-1 mean windows-1252 on the web; ASCII keeps to its 128
        // characters, which are right under any reading.
        {"windows-1252", {"ibm-5348_P100-1997"}, kWeb},
        {"iso-8859-1", {"ibm-5348_P100-1997"}, kWeb},
        {"us-ascii", {"US-ASCII"}, kWeb},
        {"iso-8859-15", {"ibm-923_P100-1998"}, kWeb},
        {"macintosh", {"macos-0_2-10.2"}, kWeb},
        // Central and Southern Europe, the Baltic, the North, the Celtic languages.
        {"windows-1250", {"ibm-5346_P100-1998"}, kWeb},
        {"iso-8859-2", {"ibm-912_P100-1995"}, kWeb},
        {"iso-8859-3", {"ibm-913_P100-2000"}, kWeb},
        {"windows-1257", {"ibm-9449_P100-2002"}, kWeb},
        {"iso-8859-4", {"ibm-914_P100-1995"}, kWeb},
        {"iso-8859-13", {"ibm-921_P100-1995"}, kWeb},
        {"iso-8859-10", {"iso-8859_10-1998"}, kWeb},
        {"iso-8859-14", {"iso-8859_14-1998"}, kWeb},
        // Turkish: Latin-5 means windows-1254.
        {"windows-1254", {"ibm-5350_P100-1998"}, kWeb},
        {"iso-8859-9", {"ibm-5350_P100-1998"}, kWeb},
        // Cyrillic.
        {"windows-1251", {"ibm-5347_P100-1998"}, kWeb},
        {"koi8-r", {"ibm-878_P100-1996"}, kWeb},
        {"koi8-u", {"ibm-1168_P100-2002"}, kWeb},
        {"iso-8859-5", {"ibm-915_P100-1995"}, kWeb},
        {"ibm866", {"ibm-866_P100-1995"}, kWeb},
        {"x-mac-cyrillic", {"macos-7_3-10.2"}, kWeb},
        // Greek, Hebrew, Arabic.
        {"windows-1253", {"ibm-5349_P100-1998"}, kWeb},
        {"iso-8859-7", {"ibm-9005_X110-2007"}, kWeb},
        {"windows-1255", {"ibm-9447_P100-2002"}, kWeb},
        {"iso-8859-8-i", {"ibm-5012_P100-1999"}, kWeb},
        {"iso-8859-8", {"ibm-5012_P100-1999"}, kWeb},
        {"windows-1256", {"ibm-9448_X100-2005"}, kWeb},
        {"iso-8859-6", {"ibm-1089_P100-1995"}, kWeb},
        // Thai: the national standard's label means windows-874. Vietnamese.
        {"windows-874", {"ibm-1162_P100-1999"}, kWeb},
        {"tis-620", {"ibm-1162_P100-1999"}, kWeb},
        {"windows-1258", {"ibm-5354_P100-1998"}, kWeb},
        // Japanese: Shift_JIS with the extensions of Windows, EUC with the supplementary kanji.
        {"shift_jis", {"ibm-943_P15A-2003"}, kWeb},
        {"euc-jp", {"euc-jp-2007"}, kWeb},
        {"iso-2022-jp", {"ISO_2022,locale=ja,version=0"}, kWeb},
        // Korean: both labels mean the unified Hangul code of Windows.
        {"euc-kr", {"windows-949-2000"}, kWeb},
        {"ks_c_5601-1987", {"windows-949-2000"}, kWeb},
        // Chinese: gb2312 means GBK. IBM's GBK has the characters that came with the standard's last edition, where
        // that of Windows writes private ones; Big5 is the one of Hong Kong, which browsers read under either label.
        {"gb18030", {"gb18030"}, kWeb},
        {"gbk", {"ibm-1386_P100-2001", "windows-936-2000"}, kWeb},
        {"gb2312", {"ibm-1386_P100-2001", "windows-936-2000"}, kWeb},
        {"big5", {"ibm-1375_P100-2008", "ibm-5471_P100-2006"}, kWeb},
        {"big5-hkscs", {"ibm-1375_P100-2008", "ibm-5471_P100-2006"}, kWeb},

        // For other readers than browsers: files of personal computers and mainframes, other forms of Unicode.
        {"utf-16", {"UTF-16"}, kLegacy},
        {"utf-32", {"UTF-32"}, kLegacy},
        {"utf-32le", {"UTF-32LE"}, kLegacy},
        {"utf-32be", {"UTF-32BE"}, kLegacy},
        {"ibm437", {"ibm-437_P100-1995"}, kLegacy},
        {"ibm850", {"ibm-850_P100-1995"}, kLegacy},
        {"ibm852", {"ibm-852_P100-1995"}, kLegacy},
        {"ibm855", {"ibm-855_P100-1995"}, kLegacy},
        {"ibm857", {"ibm-857_P100-1995"}, kLegacy},
        {"ibm00858", {"ibm-858_P100-1997"}, kLegacy},
        {"ibm860", {"ibm-860_P100-1995"}, kLegacy},
        {"ibm861", {"ibm-861_P100-1995"}, kLegacy},
        {"ibm862", {"ibm-862_P100-1995"}, kLegacy},
        {"ibm863", {"ibm-863_P100-1995"}, kLegacy},
        {"ibm864", {"ibm-864_X110-1999"}, kLegacy},
        {"ibm865", {"ibm-865_P100-1995"}, kLegacy},
        {"ibm869", {"ibm-869_P100-1995"}, kLegacy},
        {"ibm037", {"ibm-37_P100-1995"}, kLegacy},
        {"ibm273", {"ibm-273_P100-1995"}, kLegacy},
        {"ibm277", {"ibm-277_P100-1995"}, kLegacy},
        {"ibm278", {"ibm-278_P100-1995"}, kLegacy},
        {"ibm280", {"ibm-280_P100-1995"}, kLegacy},
        {"ibm284", {"ibm-284_P100-1995"}, kLegacy},
        {"ibm285", {"ibm-285_P100-1995"}, kLegacy},
        {"ibm297", {"ibm-297_P100-1995"}, kLegacy},
        {"ibm420", {"ibm-420_X120-1999"}, kLegacy},
        {"ibm424", {"ibm-424_P100-1995"}, kLegacy},
        {"ibm500", {"ibm-500_P100-1995"}, kLegacy},
        {"ibm870", {"ibm-870_P100-1995"}, kLegacy},
        {"ibm871", {"ibm-871_P100-1995"}, kLegacy},
        {"ibm1026", {"ibm-1026_P100-1995"}, kLegacy},
        {"ibm1047", {"ibm-1047_P100-1995"}, kLegacy},
        {"ibm01140", {"ibm-1140_P100-1997"}, kLegacy},
        {"ibm01141", {"ibm-1141_P100-1997"}, kLegacy},
        {"ibm01142", {"ibm-1142_P100-1997"}, kLegacy},
        {"ibm01143", {"ibm-1143_P100-1997"}, kLegacy},
        {"ibm01144", {"ibm-1144_P100-1997"}, kLegacy},
        {"ibm01145", {"ibm-1145_P100-1997"}, kLegacy},
        {"ibm01146", {"ibm-1146_P100-1997"}, kLegacy},
        {"ibm01147", {"ibm-1147_P100-1997"}, kLegacy},
        {"ibm01148", {"ibm-1148_P100-1997"}, kLegacy},
        {"ibm01149", {"ibm-1149_P100-1997"}, kLegacy},
        {"hp-roman8", {"ibm-1051_P100-1995"}, kLegacy},
    };
    return s_sets;
}

std::string characterSetsFile()
{
    XmlWriter writer;
    writer.open("characterSets");
    for (const CharacterSetEntry& set : characterSets()) {
        writer.open("characterSet", {{"name", set.label}});
        for (const std::string_view implementation : set.implementations) {
            writer.leaf("impl", {}, implementation);
        }
        writer.close();
    }
    writer.close();
    return writer.text();
}

}  // namespace datapack
