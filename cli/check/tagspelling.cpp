#include "check/tagspelling.h"

#include <algorithm>
#include <string>
#include <utility>

namespace cli {

namespace {

bool isLetter(wchar_t character) noexcept
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

bool isTagCharacter(wchar_t character) noexcept
{
    return isLetter(character) || (character >= L'0' && character <= L'9') || character == L'-' || character == L'_';
}

wchar_t toLower(wchar_t character) noexcept
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + (L'a' - L'A')) : character;
}

wchar_t toUpper(wchar_t character) noexcept
{
    return character >= L'a' && character <= L'z' ? static_cast<wchar_t>(character - (L'a' - L'A')) : character;
}

bool isAllLetters(std::wstring_view part) noexcept
{
    for (const wchar_t character : part) {
        if (!isLetter(character)) {
            return false;
        }
    }
    return true;
}

/// Which of a part's letters are capitals.
enum PartCase
{
    kAsWritten,
    kLower,
    kTitle,
    kUpper
};

void appendPart(std::wstring_view part, PartCase partCase, std::wstring& out)
{
    for (std::size_t i = 0; i < part.size(); ++i) {
        const bool isCapital = partCase == kUpper || (partCase == kTitle && i == 0);
        out += partCase == kAsWritten ? part[i] : isCapital ? toUpper(part[i]) : toLower(part[i]);
    }
}

PartCase caseOf(std::wstring_view part, bool isFirst, bool isOpen)
{
    if (isFirst) {
        return kLower;
    }
    if (isAllLetters(part) && (part.size() == 2 || part.size() == 4)) {
        return part.size() == 2 ? kUpper : kTitle;
    }
    return isOpen ? kAsWritten : kLower;
}

}  // namespace

vel::String browserSpelling(std::wstring_view pattern)
{
    std::size_t end = 0;
    while (end < pattern.size() && isTagCharacter(pattern[end])) {
        ++end;
    }
    const bool isOpenEnded = end < pattern.size() && pattern[end] == L'*';
    std::wstring spelled;
    bool isExtension = false;
    for (std::size_t start = 0; start <= end;) {
        const std::size_t stop = std::min(pattern.find_first_of(L"-_", start), end);
        const std::wstring_view part = pattern.substr(start, stop - start);
        isExtension = isExtension || (part.size() == 1 && start > 0 && stop < end);
        appendPart(part, isExtension ? kAsWritten : caseOf(part, start == 0, isOpenEnded && stop == end), spelled);
        if (stop < end) {
            spelled += L'-';
        }
        start = stop + 1;
    }
    spelled += pattern.substr(end);
    return vel::String(std::move(spelled));
}

}  // namespace cli
