#include "check/checker.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

#include "check/charactersets.h"
#include "check/configuration.h"
#include "check/currencies.h"
#include "check/definitions.h"
#include "check/lists.h"
#include "check/mapping.h"
#include "check/messages.h"
#include "check/prefixedattributes.h"
#include "text.h"
#include "vel/messages/messagefilesregistry.h"

namespace cli {

namespace {

using vel::FilePath;
using vel::String;
using vel::XmlElement;

bool isSameFile(const FilePath& a, const FilePath& b)
{
    std::error_code fault;
    return a == b || std::filesystem::equivalent(a.toNative(), b.toNative(), fault);
}

bool isThere(const FilePath& file)
{
    std::error_code fault;
    return std::filesystem::exists(file.toNative(), fault) || fault;
}

FileKind kindByChild(std::wstring_view name)
{
    static const std::pair<const wchar_t*, FileKind> kKinds[] = {{L"localeDefinition", kDefinitionsFile},
                                                                 {L"localeList", kListsFile},
                                                                 {L"localeMapping", kMappingFile},
                                                                 {L"Currency", kCurrenciesFile},
                                                                 {L"characterSet", kCharacterSetsFile},
                                                                 {L"characterSetList", kCharacterSetListsFile},
                                                                 {L"message", kMessagesFile}};
    for (const auto& [child, kind] : kKinds) {
        if (name == child) {
            return kind;
        }
    }
    return kUnknownFile;
}

FileKind kindByRoot(std::wstring_view name)
{
    static const std::pair<const wchar_t*, FileKind> kKinds[] = {{L"localeDefinitions", kDefinitionsFile},
                                                                 {L"localeDefinition", kDefinitionsFile},
                                                                 {L"localeLists", kListsFile},
                                                                 {L"localeMappings", kMappingFile},
                                                                 {L"Currencies", kCurrenciesFile},
                                                                 {L"Currency", kCurrenciesFile},
                                                                 {L"characterSets", kCharacterSetsFile},
                                                                 {L"characterSetLists", kCharacterSetListsFile},
                                                                 {L"configuration", kConfigurationFile},
                                                                 {L"messages", kMessagesFile}};
    for (const auto& [root, kind] : kKinds) {
        if (name == root) {
            return kind;
        }
    }
    return kUnknownFile;
}

}  // namespace

FileKind kindOf(const XmlElement& root)
{
    for (const XmlElement& child : vel::children(root)) {
        if (const FileKind kind = kindByChild(child.name()); kind != kUnknownFile) {
            return kind;
        }
    }
    return kindByRoot(root.name());
}

Checker::Checker(Session& session, Findings& findings) : m_tSession(session), m_tFindings(findings)
{}

void Checker::run(const std::vector<FilePath>& given)
{
    m_bOwnReported = given.empty();
    readGiven(given);
    readOwnFiles();
    layConfig();
    readConfiguredLists();
    if (m_bMessagesRead) {
        m_tKnowledge.m_tMessageKeys.emplace();
    }
    checkKind(kMessagesFile);
    if (m_tKnowledge.m_tMessageKeys && m_tKnowledge.m_tMessageKeys->empty()) {
        m_tKnowledge.m_tMessageKeys.reset();  // without messages every name would be missing
    }
    checkKind(kDefinitionsFile);
    m_tKnowledge.m_tAllowed = findAllowed();
    for (const FileKind kind : {kConfigurationFile, kListsFile, kMappingFile, kCurrenciesFile, kCharacterSetsFile,
                                kCharacterSetListsFile, kUnknownFile}) {
        checkKind(kind);
    }
    if (m_bOwnReported) {
        checkSettings();
    }
}

/// Reads a file behind those before; a fault is a finding.
bool Checker::read(const FilePath& file, FileKind kind, bool reported)
{
    try {
        vel::XmlDocument document = vel::XmlDocument::load(file);
        const FileKind actual = kind == kUnknownFile ? kindOf(document.root()) : kind;
        m_vSources.push_back({file, actual, reported, std::move(document)});
        return true;
    } catch (const vel::XmlException& fault) {
        m_tFindings.addUnreadable(fault);
        noteUnreadable(kind);
        return false;
    }
}

void Checker::noteUnreadable(FileKind kind)
{
    const bool isAny = kind == kUnknownFile;
    m_tKnowledge.m_bAllDefinitionsRead = m_tKnowledge.m_bAllDefinitionsRead && !isAny && kind != kDefinitionsFile;
    m_tKnowledge.m_bAllCharacterSetsRead = m_tKnowledge.m_bAllCharacterSetsRead && !isAny && kind != kCharacterSetsFile;
    m_tKnowledge.m_bAllCharacterSetListsRead =
        m_tKnowledge.m_bAllCharacterSetListsRead && !isAny && kind != kCharacterSetListsFile;
    m_bConfigRead = m_bConfigRead && !isAny && kind != kConfigurationFile;
    m_bMessagesRead = m_bMessagesRead && !isAny && kind != kMessagesFile;
}

void Checker::readGiven(const std::vector<FilePath>& files)
{
    for (const FilePath& file : files) {
        read(file, kUnknownFile, true);
    }
    m_nGiven = m_vSources.size();
}

/// Reads a file of the data folder or the options, which stand before the given ones; not one that is given too.
void Checker::readOwn(const std::optional<FilePath>& file, FileKind kind)
{
    if (file && sourceOf(*file) == nullptr && read(*file, kind, m_bOwnReported)) {
        std::rotate(m_vSources.end() - static_cast<std::ptrdiff_t>(m_nGiven) - 1, m_vSources.end() - 1,
                    m_vSources.end());
    }
}

void Checker::readOwnFiles()
{
    if (m_bOwnReported || hasGiven(kDefinitionsFile) || hasGiven(kCurrenciesFile)) {
        readMessages();
    }
    for (const FilePath& file : m_tSession.definitionFiles()) {
        readOwn(file, kDefinitionsFile);
    }
    readOwn(m_tSession.dataFile(L"config.xml"), kConfigurationFile);
    if (const String& config = m_tSession.options().m_sConfig; !config.isEmpty()) {
        readOwn(FilePath(config), kConfigurationFile);
    }
    readOwn(m_tSession.dataFile(L"localelists.xml"), kListsFile);
    if (m_bOwnReported) {
        readOwn(m_tSession.mappingFile(), kMappingFile);
    }
    if (m_bOwnReported || hasGiven(kCurrenciesFile)) {
        for (const FilePath& file : m_tSession.currencyFiles()) {
            readOwn(file, kCurrenciesFile);
        }
    }
    readOwnCharacterSets();
}

/// Definitions are needed to judge them, and to judge lists of them.
void Checker::readOwnCharacterSets()
{
    const bool hasLists = hasGiven(kCharacterSetListsFile);
    if (m_bOwnReported || hasLists || hasGiven(kCharacterSetsFile)) {
        for (const FilePath& file : m_tSession.characterSetFiles()) {
            readOwn(file, kCharacterSetsFile);
        }
    }
    if (m_bOwnReported || hasLists) {
        for (const FilePath& file : m_tSession.characterSetListFiles()) {
            readOwn(file, kCharacterSetListsFile);
        }
    }
}

void Checker::readMessages()
{
    const std::vector<FilePath> folders = m_tSession.messageFolders();
    for (const String& language : m_tSession.messageLanguages()) {
        for (const FilePath& folder : folders) {
            for (const String& name : vel::MessageFilesRegistry::getInstance().files()) {
                if (const FilePath file = folder.join(FilePath(language)).join(FilePath(name)); isThere(file)) {
                    readOwn(file, kMessagesFile);
                }
            }
        }
    }
}

/// Puts the configuration together as a session does, the given files in front of the others.
void Checker::layConfig()
{
    for (const Source& source : m_vSources) {
        if (source.m_eKind != kConfigurationFile) {
            continue;
        }
        try {
            // Read once more: a configuration has limits of its own.
            m_tConfig.add(vel::makeHandle<vel::XmlConfigReader>(source.m_tFile));
        } catch (const vel::XmlException& fault) {
            m_tFindings.addUnreadable(fault);
            m_bConfigRead = false;
        }
    }
    const auto settings = vel::makeHandle<vel::MemoryConfigReader>();
    for (const auto& [key, value] : m_tSession.options().m_tSettings) {
        settings->set(key, value);
    }
    m_tConfig.add(settings);
}

/// A lists file under a name of its own. One that is missing is a finding about its configuration.
void Checker::readConfiguredLists()
{
    if (const FilePath lists = m_tConfig.getFilePath(ksAllowedLocalesFile); !lists.isEmpty() && isThere(lists)) {
        readOwn(lists, kListsFile);
    }
}

const Checker::Source* Checker::sourceOf(const FilePath& file) const
{
    for (const Source& source : m_vSources) {
        if (isSameFile(source.m_tFile, file)) {
            return &source;
        }
    }
    return nullptr;
}

bool Checker::hasGiven(FileKind kind) const
{
    return std::any_of(m_vSources.end() - static_cast<std::ptrdiff_t>(m_nGiven), m_vSources.end(),
                       [kind](const Source& source) { return source.m_eKind == kind; });
}

void Checker::checkKind(FileKind kind)
{
    for (const Source& source : m_vSources) {
        if (source.m_eKind == kind) {
            m_tFindings.begin(source.m_tFile.toString(), source.m_bReported);
            checkSource(source);
            m_tFindings.end();
        }
    }
}

void Checker::checkSource(const Source& source)
{
    if (const vel::XmlRemark* const remark = source.m_tDocument.encodingRemark(); remark != nullptr) {
        m_tFindings.add(remark->m_nLine, remark->m_nColumn,
                        {kWarning, "encoding-declaration", visibleText(remark->m_sText)});
    }
    checkPrefixedAttributes(source.m_tDocument.root(), m_tFindings);
    checkContents(source);
}

void Checker::checkContents(const Source& source)
{
    const XmlElement& root = source.m_tDocument.root();
    switch (source.m_eKind) {
    case kMessagesFile: {
        std::set<String> ignored;
        checkMessages(root, m_tKnowledge.m_tMessageKeys ? *m_tKnowledge.m_tMessageKeys : ignored, m_tFindings);
        break;
    }
    case kDefinitionsFile:
        checkDefinitions(root, m_tKnowledge, m_tFindings);
        break;
    case kConfigurationFile:
        checkConfiguration(root, source.m_tFile, m_tKnowledge, m_tFindings);
        break;
    case kListsFile:
        checkLists(root, m_tKnowledge, m_tFindings);
        break;
    case kMappingFile:
        checkMapping(root, m_tKnowledge, m_tFindings);
        break;
    case kCurrenciesFile:
        checkCurrencies(root, m_tKnowledge, m_tFindings);
        break;
    case kCharacterSetsFile:
        checkCharacterSets(root, m_tKnowledge, m_tFindings);
        break;
    case kCharacterSetListsFile:
        checkCharacterSetLists(root, m_tKnowledge, m_tFindings);
        break;
    default:
        m_tFindings.add(
            root,
            {kWarning, "unknown-kind",
             "<" + visibleText(root.name()) + "> is the root of no kind of file that is checked: " +
                 "definitions, lists, mapping, currencies, character sets and their lists, configuration, messages"});
    }
}

void Checker::checkSettings()
{
    for (const auto& [key, value] : m_tSession.options().m_tSettings) {
        const std::string source = "--set " + utf8Text(key);
        if (key == ksAllowedLocalesFile && !value.isEmpty() && !isThere(FilePath(value))) {
            m_tFindings.addWithoutPlace(source, missingListsFile(FilePath(value)));
        } else if (key == ksAllowedLocales) {
            for (const String& name : unknownNamesInValue(value, m_tKnowledge)) {
                m_tFindings.addWithoutPlace(source, unknownAllowedLocale(name));
            }
        }
    }
}

/// The allowed names as configured, where that is known; given lists stand for the configured ones.
std::optional<NameSet> Checker::findAllowed() const
{
    if (!m_tKnowledge.knowsDefinitions()) {
        return std::nullopt;
    }
    if (hasGiven(kListsFile)) {
        return givenNames();
    }
    if (!m_bConfigRead) {
        return std::nullopt;
    }
    if (const FilePath lists = m_tConfig.getFilePath(ksAllowedLocalesFile); !lists.isEmpty()) {
        const Source* source = sourceOf(lists);
        return source == nullptr ? std::nullopt
                                 : std::optional(supportedNames(source->m_tDocument.root(), m_tKnowledge));
    }
    if (!m_tConfig.has(ksAllowedLocales)) {
        return std::nullopt;
    }
    NameSet allowed;
    for (String& name : namesInValue(m_tConfig.getString(ksAllowedLocales, String()))) {
        if (m_tKnowledge.isDefined(name)) {
            allowed.insert(std::move(name));
        }
    }
    return allowed;
}

NameSet Checker::givenNames() const
{
    NameSet names;
    for (auto source = m_vSources.end() - static_cast<std::ptrdiff_t>(m_nGiven); source != m_vSources.end(); ++source) {
        if (source->m_eKind == kListsFile) {
            names.merge(supportedNames(source->m_tDocument.root(), m_tKnowledge));
        }
    }
    return names;
}

}  // namespace cli
