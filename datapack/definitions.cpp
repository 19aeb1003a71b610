#include "definitions.h"

#include <map>

#include "icuproperties.h"
#include "properties.h"
#include "xmlwriter.h"

namespace datapack {
namespace {

// The types that definitions carry for people and editors; the loader takes no notice of them.
std::string_view schemaType(std::string_view property)
{
    if (property == "24hours") {
        return "xsd:boolean";
    }
    return property == "firstDayOfWeek" || property == "currencyDigits" ? "decimal" : "";
}

void writeScalar(XmlWriter& writer, std::string_view name, std::string_view value)
{
    Attributes attributes = {{"name", name}};
    if (!schemaType(name).empty()) {
        attributes.emplace_back("xsi:type", schemaType(name));
    }
    writer.leaf("property", attributes, value);
}

void writeProperties(XmlWriter& writer, const Properties& properties)
{
    for (const std::string& name : scalarNames()) {
        const auto found = properties.scalars.find(name);
        if (found != properties.scalars.end()) {
            writeScalar(writer, name, found->second);
        }
    }
    for (const std::string& name : listNames()) {
        const auto found = properties.lists.find(name);
        if (found == properties.lists.end()) {
            continue;
        }
        writer.open("property", {{"name", name}});
        for (const std::string& entry : found->second) {
            writer.leaf("property", {}, entry);
        }
        writer.close();
    }
    if (properties.scaleFactors) {
        writer.open("property", {{"name", "scaleFactors"}});
        for (const auto& [name, value] : *properties.scaleFactors) {
            writer.leaf("property", {{"name", name}}, value);
        }
        writer.close();
    }
}

void writeDefinition(XmlWriter& writer, const PackLocale& locale, const Properties& written)
{
    Attributes attributes = {{"name", locale.name}};
    if (!locale.base.empty()) {
        attributes.emplace_back("basedOn", locale.base);
    }
    writer.open("localeDefinition", attributes);
    writeProperties(writer, written);
    writer.close();
}

// A locale without genitive names, based on one that has them, repeats its plain names there: that reads the same as no
// list, and a list without entries looks like an accident.
void fillGenitiveNames(const Properties& base, Properties& wanted)
{
    if (!base.list("genetiveMonthNames").empty() && wanted.list("genetiveMonthNames").empty()) {
        wanted.lists["genetiveMonthNames"] = wanted.list("monthNames");
    }
}

}  // namespace

std::string localeDefinitions(const std::vector<PackLocale>& locales)
{
    XmlWriter writer;
    writer.open("localeDefinitions", {{"xmlns", "com.quellin.locale/v1"},
                                      {"xmlns:vell", "com.quellin.locale/v1"},
                                      {"xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance"},
                                      {"xmlns:xsd", "http://www.w3.org/2001/XMLSchema"}});
    std::map<std::string, Properties> loaded;
    for (const PackLocale& locale : locales) {
        Properties wanted = readProperties(locale);
        if (locale.base.empty()) {
            writeDefinition(writer, locale, whole(wanted));
        } else {
            const Properties& base = loaded.at(locale.base);
            fillGenitiveNames(base, wanted);
            writeDefinition(writer, locale, difference(base, wanted));
        }
        loaded[locale.name] = std::move(wanted);
    }
    writer.close();
    return writer.text();
}

std::string localeLists(const std::vector<PackLocale>& locales)
{
    XmlWriter writer;
    writer.open("localeLists");
    writer.open("localeList", {{"name", "supported"}});
    for (const PackLocale& locale : locales) {
        writer.leaf("localeDefinition", {{"name", locale.name}}, "");
    }
    writer.close();
    writer.close();
    return writer.text();
}

}  // namespace datapack
