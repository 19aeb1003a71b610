// Message files: whatever the bytes, they are messages or an exception, every look-up ends, and rendering fills every
// insert that is set.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "require.h"
#include "vel/messages/messageformatter.h"
#include "vel/messages/messagetable.h"
#include "vel/xml/xmldocument.h"

namespace {

using fuzzing::require;

void checkMessage(const vel::Handle<const vel::MessageTable>& table, const vel::String& key)
{
    const vel::GDVariant found = table->lookUp(key);
    require(found.isUndefinedOrNull() || found.primitiveType() == vel::kTypeString);
    const vel::Message external = vel::Message::external(key).insert(1, L"1").insert(2, vel::Message::external(key));
    const vel::GDVariant resolved = table->resolveReferences(vel::GDVariant::message(external));
    require(resolved.isUndefinedOrNull() == found.isUndefinedOrNull());
    const vel::String rendered = vel::MessageFormatter(table).format(external);
    if (found.isUndefinedOrNull()) {
        require(rendered == vel::MessageFormatter({}).format(external));
    } else if (found.asMessage()->keyOrText().view().find_first_of(L"%<") == std::wstring_view::npos) {
        require(rendered == found.asMessage()->keyOrText());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const vel::XmlDocument document =
            vel::XmlDocument::parse(std::string_view(reinterpret_cast<const char*>(data), size));
        const vel::Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
        table->load(document);
        for (const vel::XmlElement& each : vel::children(document.root())) {
            checkMessage(table, vel::String(each.attribute(L"key")));
        }
    } catch (const vel::XmlException&) {}
    return 0;
}
