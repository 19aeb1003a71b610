#include "bareparse.h"

#include <cstdio>
#include <stdexcept>

namespace bench {

namespace {

void XMLCALL ignoreStart(void* /*user*/, const XML_Char* /*name*/, const XML_Char** /*attributes*/)
{}

void XMLCALL ignoreEnd(void* /*user*/, const XML_Char* /*name*/)
{}

void XMLCALL ignoreText(void* /*user*/, const XML_Char* /*text*/, int /*length*/)
{}

std::string readFile(const std::string& name)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"), std::fclose);
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0) {
        throw std::runtime_error(name + ": cannot be read");
    }
    std::string bytes(static_cast<std::size_t>(std::ftell(file.get())), '\0');
    std::rewind(file.get());
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
        throw std::runtime_error(name + ": cannot be read");
    }
    return bytes;
}

}  // namespace

ExpatParser parseBare(const std::string& name)
{
    const std::string bytes = readFile(name);
    ExpatParser parser(XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetElementHandler(parser.get(), ignoreStart, ignoreEnd);
    XML_SetCharacterDataHandler(parser.get(), ignoreText);
    if (XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) != XML_STATUS_OK) {
        throw std::runtime_error(name + ": expat cannot parse it");
    }
    return parser;
}

}  // namespace bench
