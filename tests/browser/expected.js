// What six locales must show, worked out by hand from their conventions as `webi18n locale NAME` lists them. The moment
// is Tuesday, 3 February 2026, 16:05:09, the number 1234567.891, the amount 1234.5; that February begins on a Sunday.
// What is encoded: the text, the character set, the bytes by the set's published table, and what the set lacks, for
// which a reference such as &#233; is written.

/** Its 28 days with so many of January's before them, in rows of seven; "" stands for days of other months. */
function february(before) {
    const days = [...Array(before).fill(""), ...Array.from({ length: 28 }, (_, day) => String(day + 1))];
    while (days.length % 7 !== 0) {
        days.push("");
    }
    return Array.from({ length: days.length / 7 }, (_, week) => days.slice(week * 7, week * 7 + 7));
}

const kFromSunday = february(0);
const kFromMonday = february(6);
const kFromSaturday = february(1);

/** Right-to-left mark, which is part of the symbol of Egypt's pound. */
const kRightToLeft = "\u200f";

export const kExpected = {
    "en-us": {
        own: "English (United States)", tag: "en-US", direction: "ltr", language: "en",
        dates: {
            Short: "2/3/2026", Long: "Tuesday, February 3, 2026", "In forms": "02/03/2026",
            Time: "4:05:09 PM", "Time in forms": "04:05:09 PM",
        },
        numbers: {
            Number: "1,234,567.891", "Below zero": "-1,234,567.891",
            "Per cent": "25.6%", "Per cent below zero": "-25.6%",
        },
        scaled: "1.23 M",
        month: "February 2026", days: ["Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"], weeks: kFromSunday,
        typed: { year: "2004", month: "2", day: "3" }, order: "month, day, year",
        alternatives: ["day, month, year: year 2004, month 3, day 2", "year, month, day: year 2002, month 3, day 4"],
        caption: "$ (English (United States))",
        amounts: {
            Positive: "$1,234.50", "Negative, minus -$# – preferred": "-$1,234.50",
            "Negative, parens ($#)": "($1,234.50)",
        },
        sort: "und",
        encoded: ["naïve €", "koi8-r", "6e 61 26 23 32 33 39 3b 76 65 20 26 23 38 33 36 34 3b",
            ["ï U+00EF", "€ U+20AC"]],
    },
    "de-de": {
        own: "Deutsch (Deutschland)", tag: "de-DE", direction: "ltr", language: "de",
        dates: {
            Short: "03.02.2026", Long: "Dienstag, 3. Februar 2026", "In forms": "03.02.2026",
            Time: "16:05:09", "Time in forms": "16:05:09",
        },
        numbers: {
            Number: "1.234.567,891", "Below zero": "-1.234.567,891",
            "Per cent": "25,6 %", "Per cent below zero": "-25,6 %",
        },
        scaled: "1,23 Mio.",
        month: "Februar 2026", days: ["Mo.", "Di.", "Mi.", "Do.", "Fr.", "Sa.", "So."], weeks: kFromMonday,
        typed: { year: "2004", month: "3", day: "2" }, order: "day, month, year",
        alternatives: ["month, day, year: year 2004, month 2, day 3", "year, month, day: year 2002, month 3, day 4"],
        caption: "€ (Deutsch (Deutschland))",
        amounts: {
            Positive: "1.234,50 €", "Negative, minus -# $ – preferred": "-1.234,50 €",
            "Negative, parens (# $)": "(1.234,50 €)",
        },
        sort: "und",
        encoded: ["Grüße €", "windows-1252", "47 72 fc df 65 20 80", []],
    },
    "fr-ca": {
        own: "français (Canada)", tag: "fr-CA", direction: "ltr", language: "fr",
        dates: {
            Short: "2026-02-03", Long: "mardi 3 février 2026", "In forms": "2026-02-03",
            Time: "16 h 05 min 09 s", "Time in forms": "16:05:09",
        },
        numbers: {
            Number: "1 234 567,891", "Below zero": "-1 234 567,891",
            "Per cent": "25,6 %", "Per cent below zero": "-25,6 %",
        },
        scaled: "1,23 M",
        month: "février 2026", days: ["dim.", "lun.", "mar.", "mer.", "jeu.", "ven.", "sam."], weeks: kFromSunday,
        typed: { year: "2002", month: "3", day: "4" }, order: "year, month, day",
        alternatives: ["month, day, year: year 2004, month 2, day 3", "day, month, year: year 2004, month 3, day 2"],
        caption: "$ (français (Canada))",
        amounts: {
            Positive: "1 234,50 $", "Negative, minus -# $ – preferred": "-1 234,50 $",
            "Negative, parens (# $)": "(1 234,50 $)",
        },
        sort: "fr-CA",
        encoded: ["déjà œ", "iso-8859-15", "64 e9 6a e0 20 bd", []],
    },
    "ja-jp": {
        own: "日本語 (日本)", tag: "ja-JP", direction: "ltr", language: "ja",
        dates: {
            Short: "2026/02/03", Long: "2026年2月3日火曜日", "In forms": "2026/02/03",
            Time: "16:05:09", "Time in forms": "16:05:09",
        },
        numbers: {
            Number: "1,234,567.891", "Below zero": "-1,234,567.891",
            "Per cent": "25.6%", "Per cent below zero": "-25.6%",
        },
        scaled: "123.46 万",
        month: "2月 2026", days: ["日", "月", "火", "水", "木", "金", "土"], weeks: kFromSunday,
        typed: { year: "2002", month: "3", day: "4" }, order: "year, month, day",
        alternatives: ["month, day, year: year 2004, month 2, day 3", "day, month, year: year 2004, month 3, day 2"],
        caption: "￥ (日本語 (日本))",
        // The yen has no decimals, and a half is rounded to the even digit.
        amounts: {
            Positive: "￥1,234", "Negative, minus -$# – preferred": "-￥1,234",
            "Negative, parens ($#)": "(￥1,234)",
        },
        sort: "ja",
        encoded: ["日本語 é", "shift_jis", "93 fa 96 7b 8c ea 20 26 23 32 33 33 3b", ["é U+00E9"]],
    },
    "ar-eg": {
        own: "العربية (مصر)", tag: "ar-EG", direction: "rtl", language: "ar",
        dates: {
            Short: "3/2/2026", Long: "الثلاثاء، 3 فبراير 2026", "In forms": "03/02/2026",
            Time: "4:05:09 م", "Time in forms": "04:05:09 م",
        },
        numbers: {
            Number: "1,234,567.891", "Below zero": "-1,234,567.891",
            "Per cent": "25.6%", "Per cent below zero": "-25.6%",
        },
        scaled: "1.23 مليون",
        month: "فبراير 2026",
        days: ["السبت", "الأحد", "الاثنين", "الثلاثاء", "الأربعاء", "الخميس", "الجمعة"], weeks: kFromSaturday,
        typed: { year: "2004", month: "3", day: "2" }, order: "day, month, year",
        alternatives: ["month, day, year: year 2004, month 2, day 3", "year, month, day: year 2002, month 3, day 4"],
        caption: `ج.م.${kRightToLeft} (العربية (مصر))`,
        amounts: {
            Positive: `1,234.50 ج.م.${kRightToLeft}`,
            "Negative, minus -# $ – preferred": `-1,234.50 ج.م.${kRightToLeft}`,
            "Negative, parens (# $)": `(1,234.50 ج.م.${kRightToLeft})`,
        },
        sort: "ar",
        encoded: ["مرحبا", "windows-1256", "e3 d1 cd c8 c7", []],
    },
    "th-th": {
        own: "ไทย (ไทย)", tag: "th-TH", direction: "ltr", language: "th",
        dates: {
            Short: "3/2/2026", Long: "วันอังคารที่ 3 กุมภาพันธ์ 2026", "In forms": "03/02/2026",
            Time: "16:05:09", "Time in forms": "16:05:09",
        },
        numbers: {
            Number: "1,234,567.891", "Below zero": "-1,234,567.891",
            "Per cent": "25.6%", "Per cent below zero": "-25.6%",
        },
        scaled: "1.23 M",
        month: "กุมภาพันธ์ 2026", days: ["อา.", "จ.", "อ.", "พ.", "พฤ.", "ศ.", "ส."], weeks: kFromSunday,
        typed: { year: "2004", month: "3", day: "2" }, order: "day, month, year",
        alternatives: ["month, day, year: year 2004, month 2, day 3", "year, month, day: year 2002, month 3, day 4"],
        caption: "฿ (ไทย (ไทย))",
        amounts: {
            Positive: "฿1,234.50", "Negative, minus -$# – preferred": "-฿1,234.50",
            "Negative, parens ($#)": "(฿1,234.50)",
        },
        sort: "th",
        encoded: ["ไก่ é", "windows-874", "e4 a1 e8 20 26 23 32 33 33 3b", ["é U+00E9"]],
    },
};
