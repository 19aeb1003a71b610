#include "check/definitions.h"

#include <array>
#include <map>
#include <string>
#include <utility>

#include "check/properties.h"
#include "text.h"

namespace cli {

namespace {

using vel::Locale;
using vel::String;
using vel::XmlElement;

/// The elements that set a definition's properties, the last of each name.
using OwnProperties = std::map<std::wstring_view, const XmlElement*>;

/// Two separators that must not be the same, and the properties that set them.
struct Conflict
{
    Locale::StringInfo m_eOne;
    Locale::StringInfo m_eOther;
    std::array<Locale::StringInfo, 4> m_aSetters;
    const char* m_pRule;
    const char* m_pWhy;
};

constexpr Conflict kPlainConflict = {
    Locale::kDecimalSeparator,
    Locale::kThousandsSeparator,
    {Locale::kDecimalSeparator, Locale::kThousandsSeparator, Locale::kDecimalSeparator, Locale::kThousandsSeparator},
    "same-separators",
    "a number with both cannot be read"};
constexpr Conflict kMonetaryConflict = {Locale::kMonetaryDecimalSeparator,
                                        Locale::kMonetaryThousandsSeparator,
                                        {Locale::kMonetaryDecimalSeparator, Locale::kMonetaryThousandsSeparator,
                                         Locale::kDecimalSeparator, Locale::kThousandsSeparator},
                                        "same-separators",
                                        "an amount with both cannot be read"};
constexpr Conflict kListConflict = {
    Locale::kListSeparator,
    Locale::kDecimalSeparator,
    {Locale::kListSeparator, Locale::kDecimalSeparator, Locale::kListSeparator, Locale::kDecimalSeparator},
    "list-separator-is-decimal",
    "the numbers of a list cannot be told apart"};

class DefinitionsCheck
{
public:
    DefinitionsCheck(const XmlElement& root, Knowledge& knowledge, Findings& findings);

    void run();

private:
    void checkOne(const XmlElement& definition);
    void checkHead(const XmlElement& definition);
    void checkBase(const XmlElement& definition);
    OwnProperties checkProperties(const XmlElement& definition);
    void checkConflicts(const Locale& locale, const Locale& base, const OwnProperties& own);
    bool checkConflict(const Conflict& conflict, const Locale& locale, const Locale& base, const OwnProperties& own);
    void checkDisplayMessage(const Locale& locale, const OwnProperties& own);
    void checkEmptySeparators(const XmlElement& definition, const Locale& locale, const Locale& base,
                              const OwnProperties& own);
    Locale baseOf(const XmlElement& definition) const;

    const XmlElement& m_tRoot;
    Knowledge& m_tKnowledge;
    Findings& m_tFindings;
    // The places of the names in this file: of all its definitions, and of those checked so far.
    std::map<std::wstring_view, const XmlElement*, vel::NoCaseCompareLess> m_tLast;
    std::map<std::wstring_view, const XmlElement*, vel::NoCaseCompareLess> m_tSeen;
};

std::string lineOf(const XmlElement& element)
{
    return "line " + std::to_string(element.line());
}

DefinitionsCheck::DefinitionsCheck(const XmlElement& root, Knowledge& knowledge, Findings& findings)
    : m_tRoot(root), m_tKnowledge(knowledge), m_tFindings(findings)
{
    for (const XmlElement& child : vel::children(root)) {
        if (child.name() == L"localeDefinition") {
            m_tLast.insert_or_assign(child.attribute(L"name"), &child);
        }
    }
}

void DefinitionsCheck::run()
{
    if (m_tRoot.name() == L"localeDefinition") {
        m_tFindings.add(m_tRoot, {kWarning, "root-is-definition",
                                  "a definition at the root is not read: put it into <localeDefinitions>"});
        return;
    }
    for (const XmlElement& child : vel::children(m_tRoot)) {
        if (child.name() == L"localeDefinition") {
            checkOne(child);
            continue;
        }
        m_tFindings.add(
            child, {kWarning, "skipped-element",
                    "<" + visibleText(child.name()) + "> is skipped: here stand <localeDefinition> " + "elements"});
    }
}

void DefinitionsCheck::checkOne(const XmlElement& definition)
{
    checkHead(definition);
    checkBase(definition);
    const OwnProperties own = checkProperties(definition);
    const Locale base = baseOf(definition);
    Locale locale = base;
    locale.applyXmlDefinition(definition);
    checkConflicts(locale, base, own);
    checkEmptySeparators(definition, locale, base, own);
    checkDisplayMessage(locale, own);
    m_tKnowledge.m_tDefinitions.insert_or_assign(locale.definitionName(), locale);
}

Locale DefinitionsCheck::baseOf(const XmlElement& definition) const
{
    const std::wstring_view base = definition.attribute(L"basedOn");
    const vel::LocaleMap& known = m_tKnowledge.m_tDefinitions;
    const auto found = base.empty() ? known.end() : known.find(base);
    return found == known.end() ? Locale() : found->second;
}

void DefinitionsCheck::checkHead(const XmlElement& definition)
{
    const std::wstring_view name = definition.attribute(L"name");
    if (name.empty()) {
        const Locale base = baseOf(definition);
        const std::string effect =
            base.isValid() ? "replaces its base " + quotedName(base.definitionName()) : "cannot be found by any name";
        m_tFindings.add(definition,
                        {kWarning, "definition-without-name", "a definition without a name " + effect + ": name it"});
        return;
    }
    const auto [seen, isNew] = m_tSeen.emplace(name, &definition);
    if (!isNew) {
        m_tFindings.add(definition, {kWarning, "duplicate-definition",
                                     "definition " + quotedName(name) + " replaces the one of the same name in " +
                                         lineOf(*seen->second) + ": keep one of them"});
    } else if (String::trim(name).size() != name.size()) {
        m_tFindings.add(definition, {kWarning, "white-space",
                                     "the name " + quotedName(name) + " begins or ends with white space: take it out"});
    }
}

void DefinitionsCheck::checkBase(const XmlElement& definition)
{
    const std::wstring_view base = definition.attribute(L"basedOn");
    if (base.empty() || m_tKnowledge.isDefined(base) || !m_tKnowledge.m_bAllDefinitionsRead) {
        return;
    }
    const std::string consequence = ", so this definition starts from the defaults: ";
    const auto later = m_tLast.find(base);
    if (vel::compareNoCase(base, definition.attribute(L"name")) == 0) {
        m_tFindings.add(definition, {kWarning, "based-on-itself",
                                     "definition " + quotedName(base) + " is based on itself, and none of that name " +
                                         "stands before it" + consequence + "name another base or none"});
    } else if (later != m_tLast.end()) {
        m_tFindings.add(definition, {kWarning, "based-on-later",
                                     "the base " + quotedName(base) + " stands later, in " + lineOf(*later->second) +
                                         consequence + "move the base before it"});
    } else {
        m_tFindings.add(definition, {kWarning, "based-on-unknown",
                                     "there is no definition " + quotedName(base) + " to be based on" + consequence +
                                         "correct the name, or load the file that has it first"});
    }
}

OwnProperties DefinitionsCheck::checkProperties(const XmlElement& definition)
{
    OwnProperties own;
    for (const XmlElement& element : vel::children(definition)) {
        const std::wstring_view name = element.attribute(L"name");
        if (element.name() == L"property" && !name.empty()) {
            const auto [before, isNew] = own.emplace(name, &element);
            if (!isNew) {
                m_tFindings.add(element, {kWarning, "duplicate-property",
                                          "property " + quotedName(name) + " is set in " + lineOf(*before->second) +
                                              " already, and the last one counts: keep one of them"});
                before->second = &element;
                continue;
            }
        }
        checkProperty(element, m_tFindings);
    }
    return own;
}

const XmlElement* elementOf(Locale::StringInfo info, const OwnProperties& own)
{
    const auto found = own.find(Locale::stringInfoMap().find(info).view());
    return found == own.end() ? nullptr : found->second;
}

/// The last of the elements that set one of the conflict's separators, or null.
const XmlElement* lastSetter(const Conflict& conflict, const OwnProperties& own)
{
    const XmlElement* last = nullptr;
    for (const Locale::StringInfo info : conflict.m_aSetters) {
        const XmlElement* element = elementOf(info, own);
        if (element != nullptr && (last == nullptr || std::pair(element->line(), element->column()) >
                                                          std::pair(last->line(), last->column()))) {
            last = element;
        }
    }
    return last;
}

/// The text that both separators of the conflict are; empty when they differ.
String sharedText(const Conflict& conflict, const Locale& locale)
{
    if (!locale.isValid()) {
        return {};
    }
    String one = locale.getInfoAsString(conflict.m_eOne);
    return one == locale.getInfoAsString(conflict.m_eOther) ? one : String();
}

void DefinitionsCheck::checkConflicts(const Locale& locale, const Locale& base, const OwnProperties& own)
{
    // Monetary separators mostly follow the plain ones, and then share their accident.
    if (!checkConflict(kPlainConflict, locale, base, own)) {
        checkConflict(kMonetaryConflict, locale, base, own);
    }
    checkConflict(kListConflict, locale, base, own);
}

/// A conflict that the base has already is the base's accident.
bool DefinitionsCheck::checkConflict(const Conflict& conflict, const Locale& locale, const Locale& base,
                                     const OwnProperties& own)
{
    const String text = sharedText(conflict, locale);
    const XmlElement* place = lastSetter(conflict, own);
    if (text.isEmpty() || place == nullptr || text == sharedText(conflict, base)) {
        return false;
    }
    m_tFindings.add(*place, {kWarning, conflict.m_pRule,
                             utf8Text(Locale::stringInfoMap().find(conflict.m_eOne)) + " and " +
                                 utf8Text(Locale::stringInfoMap().find(conflict.m_eOther)) + " are both " +
                                 quotedName(text) + ", so " + conflict.m_pWhy + ": change one of them"});
    return true;
}

/// The place of a separator that is empty, while that of the base is not; else null.
const XmlElement* placeOfEmpty(Locale::StringInfo separator, const XmlElement& definition, const Locale& locale,
                               const Locale& base, const OwnProperties& own)
{
    const bool isOfBase = base.isValid() && base.getInfoAsString(separator).isEmpty();
    if (isOfBase || !locale.getInfoAsString(separator).isEmpty()) {
        return nullptr;
    }
    const XmlElement* element = elementOf(separator, own);
    return element == nullptr ? &definition : element;
}

/// A reader of dates takes an empty separator to be behind every number, and looks for that of times first.
void DefinitionsCheck::checkEmptySeparators(const XmlElement& definition, const Locale& locale, const Locale& base,
                                            const OwnProperties& own)
{
    const bool isBaseMissing = !base.isValid() && !definition.attribute(L"basedOn").empty();
    if (isBaseMissing || locale.definitionName().isEmpty()) {
        return;  // what has been said of the base or the name already explains it
    }
    const XmlElement* time = placeOfEmpty(Locale::kTimeSeparator, definition, locale, base, own);
    const XmlElement* date = placeOfEmpty(Locale::kDateSeparator, definition, locale, base, own);
    const auto add = [this](const XmlElement& place, const std::string& subject, const char* consequence) {
        m_tFindings.add(place, {kWarning, "empty-separator",
                                subject + " empty and taken to stand everywhere, so " + consequence +
                                    ": set the separators, or base the definition on one that has them"});
    };
    if (time != nullptr && date == time) {
        add(*time, "timeSeparator and dateSeparator are", "no date is read");
        return;
    }
    if (time != nullptr) {
        add(*time, "timeSeparator is", "no date is read");
    }
    if (date != nullptr) {
        add(*date, "dateSeparator is", "neither hours with minutes nor dates that end in two digits are read");
    }
}

void DefinitionsCheck::checkDisplayMessage(const Locale& locale, const OwnProperties& own)
{
    const XmlElement* place = elementOf(Locale::kLocaleMessageName, own);
    const String key = locale.getInfoAsString(Locale::kLocaleMessageName);
    if (place == nullptr || key.isEmpty() || !m_tKnowledge.m_tMessageKeys ||
        m_tKnowledge.m_tMessageKeys->contains(key)) {
        return;
    }
    m_tFindings.add(*place, {kMinorWarning, "display-message-missing",
                             "no language has the message " + quotedName(key) + ", so the locale is shown as " +
                                 quotedName(locale.definitionName()) + ": add the message"});
}

}  // namespace

void checkDefinitions(const XmlElement& root, Knowledge& knowledge, Findings& findings)
{
    DefinitionsCheck(root, knowledge, findings).run();
}

}  // namespace cli
