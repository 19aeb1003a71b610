#include "tokens.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <stdexcept>

namespace shipped {
namespace {

bool isLetter(char character)
{
    return std::isalpha(static_cast<unsigned char>(character)) != 0 && static_cast<unsigned char>(character) < 0x80;
}

// Two quotes stand for one, inside quotes and outside.
std::string quotedText(const std::string& format, size_t& at)
{
    std::string text;
    for (++at; at < format.size(); ++at) {
        if (format[at] != '\'') {
            text += format[at];
        } else if (at + 1 < format.size() && format[at + 1] == '\'') {
            text += format[++at];
        } else {
            ++at;
            return text;
        }
    }
    throw std::runtime_error("unclosed quote in " + format);
}

std::string twoDigits(int number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string renderNumber(int number, const std::string& token)
{
    return token.size() == 1 ? std::to_string(number) : twoDigits(number);
}

std::string renderName(const std::string& token, const Loaded& locale, const Moment& moment)
{
    const size_t month = static_cast<size_t>(moment.month - 1);
    const size_t weekday = static_cast<size_t>(moment.weekday);
    if (token == "dddd") {
        return locale.list("dayNames").at(weekday);
    }
    if (token == "ddd") {
        return locale.list("abbrevDayNames").at(weekday);
    }
    return token == "MMMM" ? locale.monthInDate(month) : locale.list("abbrevMonthNames").at(month);
}

std::string renderToken(const std::string& token, const Loaded& locale, const Moment& moment)
{
    if (token.size() > 2 && token[0] != 'y') {
        return renderName(token, locale, moment);
    }
    switch (token[0]) {
    case 'd':
        return renderNumber(moment.day, token);
    case 'M':
        return renderNumber(moment.month, token);
    case 'y':
        return token.size() == 4 ? std::to_string(moment.year) : twoDigits(moment.year % 100);
    case 'H':
        return renderNumber(moment.hour, token);
    case 'h':
        return renderNumber((moment.hour + 11) % 12 + 1, token);
    case 'm':
        return renderNumber(moment.minute, token);
    case 's':
        return renderNumber(moment.second, token);
    default:
        return locale.scalar(moment.hour < 12 ? "am" : "pm");
    }
}

}  // namespace

std::vector<FormatPiece> formatPieces(const std::string& format)
{
    std::vector<FormatPiece> pieces;
    for (size_t at = 0; at < format.size();) {
        if (format[at] == '\'') {
            pieces.push_back({false, quotedText(format, at)});
        } else if (isLetter(format[at])) {
            const size_t end = format.find_first_not_of(format[at], at);
            pieces.push_back({true, format.substr(at, end - at)});
            at = std::min(end, format.size());
        } else {
            pieces.push_back({false, format.substr(at++, 1)});
        }
    }
    return pieces;
}

bool isLegalToken(const std::string& token)
{
    static const std::set<std::string> tokens = {"d", "dd", "ddd", "dddd", "M", "MM", "MMM", "MMMM", "yy", "yyyy",
                                                 "h", "hh", "H",   "HH",   "m", "mm", "s",   "ss",   "t",  "tt"};
    return tokens.count(token) != 0;
}

std::string render(const std::string& format, const Loaded& locale, const Moment& moment)
{
    std::string text;
    for (const FormatPiece& piece : formatPieces(format)) {
        text += piece.isToken ? renderToken(piece.text, locale, moment) : piece.text;
    }
    return text;
}

}  // namespace shipped
