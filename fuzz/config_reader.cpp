// Configuration files: whatever the bytes, they are values or an exception, and what was read obeys its promises.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "require.h"
#include "vel/config/configreader.h"
#include "vel/xml/xmldocument.h"

namespace {

using fuzzing::require;

void checkValue(const vel::XmlConfigReader& reader, const vel::String& key)
{
    const vel::String value = reader.getString(key, L" default ");
    require(value == L" default " || value == value.trimmed());
    const vel::FilePath path = reader.getFilePath(key);
    require(value == L" default " || value.isEmpty() ? path.isEmpty() : !path.isEmpty());
    require(path.isEmpty() || path.isAbsolute());
}

/// Asks for the keys of the first chain of elements, leaf or not.
void checkFirstChain(const vel::XmlConfigReader& reader, const vel::XmlElement& root)
{
    vel::String key;
    for (const vel::XmlElement* each = root.firstChild(); each != nullptr; each = each->firstChild()) {
        key += each->name();
        checkValue(reader, key);
        key += L'/';
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const vel::XmlDocument document =
            vel::XmlDocument::parse(std::string_view(reinterpret_cast<const char*>(data), size));
        const vel::XmlConfigReader reader(document, vel::FilePath(L"/conf"));
        checkValue(reader, L"Localization/AllowedLocalesFile");
        checkValue(reader, L"Localization/AllowedLocales");
        checkFirstChain(reader, document.root());
    } catch (const vel::XmlException&) {}
    return 0;
}
