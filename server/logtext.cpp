#include "logtext.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "answers/text.h"

namespace server {

namespace {

/// Controls, format characters with an effect on their line, the separators of lines and paragraphs, tags.
constexpr std::pair<wchar_t, wchar_t> kUnwanted[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x180E, 0x180E},  {0x200B, 0x200F},
    {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};

bool isUnwanted(wchar_t character)
{
    return std::any_of(std::begin(kUnwanted), std::end(kUnwanted), [character](const auto& range) {
        return range.first <= character && character <= range.second;
    });
}

}  // namespace

std::string logText(std::wstring_view text)
{
    std::string line;
    while (!text.empty()) {
        const auto end = std::find_if(text.begin(), text.end(), &isUnwanted);
        const auto plain = static_cast<std::size_t>(end - text.begin());
        line += answers::utf8Text(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            char escape[24];
            std::snprintf(escape, sizeof escape, "\\u{%X}", static_cast<unsigned>(text.front()));
            line += escape;
            text.remove_prefix(1);
        }
    }
    return line;
}

}  // namespace server
