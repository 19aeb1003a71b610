#include "packfiles.h"

namespace shipped {
namespace {

Loaded fresh()
{
    Loaded loaded;
    loaded.scalars = {
        {"am", "am"},           {"pm", "pm"}, {"24hours", "false"}, {"dateOrder", "mdy"}, {"currencyDigits", "2"},
        {"firstDayOfWeek", "6"}};
    return loaded;
}

bool isList(const std::string& name)
{
    for (const char* list : {"monthNames", "genetiveMonthNames", "abbrevMonthNames", "dayNames", "abbrevDayNames",
                             "dateFormats", "timeFormats", "dateTimeFormats"}) {
        if (name == list) {
            return true;
        }
    }
    return false;
}

void applyProperty(const Element& property, Loaded& loaded)
{
    const std::string name = property.attribute("name");
    if (name == "scaleFactors") {
        loaded.scaleFactors.clear();
        for (const Element& entry : property.children) {
            loaded.scaleFactors.emplace_back(entry.attribute("name"), entry.text);
        }
    } else if (isList(name)) {
        loaded.lists[name].clear();
        for (const Element& entry : property.children) {
            loaded.lists[name].push_back(entry.text);
        }
    } else {
        loaded.scalars[name] = property.text;
    }
}

// A monetary separator that equals the plain one follows it, before and after the properties are applied.
void apply(const Element& definition, Loaded& loaded)
{
    const char* pairs[][2] = {{"monetaryThousandsSeparator", "thousandsSeparator"},
                              {"monetaryDecimalSeparator", "decimalSeparator"}};
    for (const auto& pair : pairs) {
        if (loaded.scalar(pair[0]) == loaded.scalar(pair[1])) {
            loaded.scalars[pair[0]].clear();
        }
    }
    for (const Element& property : definition.children) {
        applyProperty(property, loaded);
    }
    for (const auto& pair : pairs) {
        if (loaded.scalar(pair[0]).empty()) {
            loaded.scalars[pair[0]] = loaded.scalar(pair[1]);
        }
    }
}

}  // namespace

std::string Loaded::scalar(const std::string& name) const
{
    const auto found = scalars.find(name);
    return found == scalars.end() ? std::string() : found->second;
}

std::vector<std::string> Loaded::list(const std::string& name) const
{
    const auto found = lists.find(name);
    return found == lists.end() ? std::vector<std::string>() : found->second;
}

std::string Loaded::monthInDate(size_t index) const
{
    const std::vector<std::string> genitives = list("genetiveMonthNames");
    return genitives.empty() ? list("monthNames").at(index) : genitives.at(index);
}

std::string packFile(const std::string& name)
{
    return std::string(WEBI18N_PACK_DIR) + "/" + name;
}

const Element& definitions()
{
    static const Element root = readXml(packFile("localedefinitions.xml"));
    return root;
}

const std::map<std::string, Loaded>& loadedLocales()
{
    static const std::map<std::string, Loaded> loaded = [] {
        std::map<std::string, Loaded> result;
        for (const Element& definition : definitions().children) {
            const auto base = result.find(definition.attribute("basedOn"));
            Loaded locale = base == result.end() ? fresh() : base->second;
            apply(definition, locale);
            result[definition.attribute("name")] = locale;
        }
        return result;
    }();
    return loaded;
}

const std::vector<Element>& currencies()
{
    static const std::vector<Element> all = readXml(packFile("currencies.xml")).children;
    return all;
}

const std::vector<Rule>& rules()
{
    static const std::vector<Rule> all = [] {
        std::vector<Rule> result;
        const Element root = readXml(packFile("localemapping.xml"));
        for (const Element& mapping : root.children) {
            for (const Element& when : mapping.children.at(0).children) {
                result.push_back({when.attribute("matches"), when.children.at(0).attribute("name")});
            }
        }
        return result;
    }();
    return all;
}

std::string mapTag(const std::string& tag)
{
    for (const Rule& rule : rules()) {
        const size_t star = rule.pattern.find('*');
        const bool isMatch =
            star == std::string::npos ? tag == rule.pattern : tag.compare(0, star, rule.pattern, 0, star) == 0;
        if (isMatch) {
            return rule.target;
        }
    }
    return {};
}

}  // namespace shipped
