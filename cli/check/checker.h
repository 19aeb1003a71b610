#pragma once

#include <optional>
#include <vector>

#include "check/findings.h"
#include "check/knowledge.h"
#include "session.h"
#include "vel/xml/xmldocument.h"

namespace cli {

/// What a file holds.
enum FileKind
{
    kMessagesFile,
    kDefinitionsFile,
    kConfigurationFile,
    kListsFile,
    kMappingFile,
    kCurrenciesFile,
    kCharacterSetsFile,
    kCharacterSetListsFile,
    kUnknownFile
};

/// By the elements below the root, and where they do not tell, by the root's own name.
FileKind kindOf(const vel::XmlElement& root);

/// Checks files against each other.
class Checker
{
public:
    Checker(Session& session, Findings& findings);

    /// Checks the data folder's files and those of the global options; or only the given ones, as if they were loaded
    /// after those.
    void run(const std::vector<vel::FilePath>& given);

private:
    /// A file that was read.
    struct Source
    {
        vel::FilePath m_tFile;
        FileKind m_eKind;
        bool m_bReported;
        vel::XmlDocument m_tDocument;
    };

    bool read(const vel::FilePath& file, FileKind kind, bool reported);
    void noteUnreadable(FileKind kind);
    void readGiven(const std::vector<vel::FilePath>& files);
    void readOwn(const std::optional<vel::FilePath>& file, FileKind kind);
    void readOwnFiles();
    void readOwnCharacterSets();
    void readMessages();
    void readConfiguredLists();
    void layConfig();
    const Source* sourceOf(const vel::FilePath& file) const;
    bool hasGiven(FileKind kind) const;

    void checkKind(FileKind kind);
    void checkSource(const Source& source);
    void checkContents(const Source& source);
    void checkSettings();
    std::optional<NameSet> findAllowed() const;
    NameSet givenNames() const;

    Session& m_tSession;
    Findings& m_tFindings;
    Knowledge m_tKnowledge;
    std::vector<Source> m_vSources;  // in the order of loading
    std::size_t m_nGiven = 0;        // how many of them, the last ones, were given
    bool m_bOwnReported = true;
    LayeredConfigReader m_tConfig;
    bool m_bConfigRead = true;
    bool m_bMessagesRead = true;
};

}  // namespace cli
