#include "webindex.h"

#include <stdexcept>

#include "vel/core/utf8.h"

namespace reference {

std::ifstream openWebFile(const std::string& file)
{
    std::ifstream stream(std::string(WEBI18N_WEB_ENCODINGS) + "/" + file);
    if (!stream) {
        throw std::runtime_error("no file " + file);
    }
    return stream;
}

WebIndex::WebIndex(const std::string& name)
{
    std::ifstream stream = openWebFile("index-" + name + ".txt");
    for (std::string line; std::getline(stream, line);) {
        const std::size_t tab = line.find('\t');
        std::wstring characters;
        if (vel::appendUtf8AsWide(line.substr(tab + 1), characters)) {
            throw std::runtime_error("index " + name + " is no UTF-8");
        }
        unsigned pointer = static_cast<unsigned>(std::stoul(line));
        for (const wchar_t each : characters) {
            m_tCharacters.emplace(pointer++, static_cast<char32_t>(each));
        }
    }
    for (const auto& [pointer, character] : m_tCharacters) {
        m_tPointers[character].push_back(pointer);
    }
}

}  // namespace reference
