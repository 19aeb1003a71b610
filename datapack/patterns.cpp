#include "patterns.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "icutext.h"

namespace datapack {
namespace {

bool isAsciiLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

void appendLiteral(Pattern& pattern, const icu::UnicodeString& text)
{
    if (text.isEmpty()) {
        return;
    }
    if (pattern.empty() || pattern.back().letter != 0) {
        pattern.push_back({0, 0, {}});
    }
    pattern.back().literal += text;
}

// Reads a quoted text behind its opening quote and leaves `index` behind the closing one. Two quotes stand for one.
icu::UnicodeString readQuoted(const icu::UnicodeString& source, int32_t& index)
{
    icu::UnicodeString text;
    while (index < source.length()) {
        const char16_t unit = source.charAt(index++);
        if (unit != u'\'') {
            text.append(unit);
            continue;
        }
        if (index >= source.length() || source.charAt(index) != u'\'') {
            break;
        }
        text.append(source.charAt(index++));
    }
    return text;
}

int readRun(const icu::UnicodeString& source, int32_t& index)
{
    const char16_t letter = source.charAt(index);
    int count = 0;
    while (index < source.length() && source.charAt(index) == letter) {
        ++index;
        ++count;
    }
    return count;
}

Pattern splitPattern(const icu::UnicodeString& source)
{
    Pattern pattern;
    int32_t index = 0;
    while (index < source.length()) {
        const char16_t unit = source.charAt(index);
        if (unit == u'\'' && index + 1 < source.length() && source.charAt(index + 1) == u'\'') {
            appendLiteral(pattern, icu::UnicodeString(u'\''));
            index += 2;
        } else if (unit == u'\'') {
            appendLiteral(pattern, readQuoted(source, ++index));
        } else if (isAsciiLetter(unit)) {
            pattern.push_back({unit, readRun(source, index), {}});
        } else {
            appendLiteral(pattern, icu::UnicodeString(unit));
            ++index;
        }
    }
    return pattern;
}

std::u16string_view tokenOf(char16_t letter, int count)
{
    const bool isTwo = count == 2;
    switch (letter) {
    case u'y':
    case u'Y':
    case u'u':
        return isTwo ? u"yy" : u"yyyy";
    case u'M':
    case u'L':
        return count == 1 ? u"M" : isTwo ? u"MM" : count == 4 ? u"MMMM" : u"MMM";
    case u'd':
        return isTwo ? u"dd" : u"d";
    case u'E':
    case u'e':
    case u'c':
        return count == 4 ? u"dddd" : u"ddd";
    case u'h':
    case u'K':
        return isTwo ? u"hh" : u"h";
    case u'H':
    case u'k':
        return isTwo ? u"HH" : u"H";
    case u'm':
        return isTwo ? u"mm" : u"m";
    case u's':
        return isTwo ? u"ss" : u"s";
    case u'a':
    case u'b':
    case u'B':
        return u"tt";
    default:
        return {};
    }
}

bool isNumericField(const PatternPiece& piece)
{
    const icu::UnicodeString numericLetters(u"yYuMLdhKHkms");
    const bool isName = (piece.letter == u'M' || piece.letter == u'L') && piece.count > 2;
    return piece.letter != 0 && numericLetters.indexOf(piece.letter) >= 0 && !isName;
}

// A dropped field takes the blanks on one side with it: those behind it, else those before it.
Pattern withoutUnknownFields(const Pattern& pattern)
{
    Pattern kept;
    bool isBlankDropped = false;
    for (const PatternPiece& piece : pattern) {
        if (piece.letter == 0) {
            icu::UnicodeString literal = piece.literal;
            const bool followsBlank =
                kept.empty() || (kept.back().letter == 0 && kept.back().literal.endsWith(icu::UnicodeString(u' ')));
            while (isBlankDropped && followsBlank && literal.startsWith(icu::UnicodeString(u' '))) {
                literal.remove(0, 1);
            }
            appendLiteral(kept, literal);
            isBlankDropped = false;
        } else if (tokenOf(piece.letter, piece.count).empty()) {
            isBlankDropped = true;
        } else {
            kept.push_back(piece);
            isBlankDropped = false;
        }
    }
    if (isBlankDropped && !kept.empty() && kept.back().letter == 0) {
        kept.back().literal.trim();
    }
    return kept;
}

bool isWordPart(char16_t unit)
{
    return u_isalpha(unit) || u_charType(unit) == U_NON_SPACING_MARK;
}

// Quotes from the first to the last ASCII letter and the rest of their words: " 'den' " and "'dä'", so that blanks and
// punctuation around words stay bare.
icu::UnicodeString quoted(const icu::UnicodeString& literal)
{
    int32_t first = -1;
    int32_t end = -1;
    for (int32_t index = 0; index < literal.length(); ++index) {
        if (isAsciiLetter(literal.charAt(index)) || literal.charAt(index) == u'\'') {
            first = first < 0 ? index : first;
            end = index + 1;
        }
    }
    if (first < 0) {
        return literal;
    }
    while (first > 0 && isWordPart(literal.charAt(first - 1))) {
        --first;
    }
    while (end < literal.length() && isWordPart(literal.charAt(end))) {
        ++end;
    }
    icu::UnicodeString inner(literal, first, end - first);
    inner.findAndReplace(icu::UnicodeString(u"'"), icu::UnicodeString(u"''"));
    return icu::UnicodeString(literal, 0, first) + u'\'' + inner + u'\'' + icu::UnicodeString(literal, end);
}

Pattern withCount(Pattern pattern, const icu::UnicodeString& letters, int count)
{
    for (PatternPiece& piece : pattern) {
        if (piece.letter != 0 && letters.indexOf(piece.letter) >= 0 && isNumericField(piece)) {
            piece.count = count;
        }
    }
    return pattern;
}

}  // namespace

Pattern readPattern(const icu::UnicodeString& icuPattern)
{
    return withoutUnknownFields(splitPattern(typable(icuPattern)));
}

std::string toTokens(const Pattern& pattern)
{
    icu::UnicodeString tokens;
    for (const PatternPiece& piece : pattern) {
        if (piece.letter == 0) {
            tokens += quoted(piece.literal);
        } else {
            const std::u16string_view token = tokenOf(piece.letter, piece.count);
            tokens.append(token.data(), static_cast<int32_t>(token.size()));
        }
    }
    return toUtf8(tokens);
}

Pattern withYear(Pattern pattern, int digits)
{
    return withCount(std::move(pattern), u"yYu", digits);
}

Pattern withDayAndMonth(Pattern pattern, int digits)
{
    return withCount(std::move(pattern), u"dML", digits);
}

Pattern withHour(Pattern pattern, int digits)
{
    return withCount(std::move(pattern), u"hKHk", digits);
}

Pattern withDayPeriod(Pattern pattern)
{
    const auto hasAny = [&](std::u16string_view letters) {
        return std::any_of(pattern.begin(), pattern.end(), [&](const PatternPiece& piece) {
            return piece.letter != 0 && letters.find(piece.letter) != std::u16string_view::npos;
        });
    };
    if (hasAny(u"hK") && !hasAny(u"abB")) {
        pattern.push_back({0, 0, u" "});
        pattern.push_back({u'a', 1, {}});
    }
    return pattern;
}

bool is24Hours(const Pattern& pattern)
{
    for (const PatternPiece& piece : pattern) {
        if (piece.letter == u'H' || piece.letter == u'k') {
            return true;
        }
    }
    return false;
}

std::string dateOrder(const Pattern& pattern)
{
    std::u16string order;
    for (const PatternPiece& piece : pattern) {
        const std::u16string_view token =
            piece.letter == 0 ? std::u16string_view() : tokenOf(piece.letter, piece.count);
        const bool isWeekday = token.size() > 2 && token[0] == u'd';
        if (!token.empty() && !isWeekday) {
            order += token[0];
        }
    }
    if (!order.empty() && order[0] == u'y') {
        return "ymd";
    }
    return order.find(u'd') < order.find(u'M') ? "dmy" : "mdy";
}

std::string fieldSeparator(const Pattern& pattern)
{
    for (size_t index = 1; index + 1 < pattern.size(); ++index) {
        const icu::UnicodeString& literal = pattern[index].literal;
        if (!isNumericField(pattern[index - 1]) || !isNumericField(pattern[index + 1]) || literal.isEmpty()) {
            continue;
        }
        for (int32_t position = 0; position < literal.length(); ++position) {
            if (u_isalpha(literal.char32At(position))) {
                return {};
            }
        }
        return typableSeparator(literal);
    }
    return {};
}

}  // namespace datapack
