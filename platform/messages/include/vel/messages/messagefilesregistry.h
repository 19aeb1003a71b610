#pragma once

#include <vector>

#include "vel/core/api.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/messages/messagetable.h"

namespace vel {

/// The names of the message files that libraries bring along ("i18nmessages.xml"), each of which stands in a folder per
/// language below a messages folder. Process-wide; usable from any static initialiser and any thread.
class WEBI18N_API MessageFilesRegistry
{
public:
    static MessageFilesRegistry& getInstance();

    /// Adds a file's name; a name that is there already is not added again.
    void registerFile(const String& fileName);
    /// The names in the order of their registration.
    std::vector<String> files() const;

    /// The messages of one language: every registered file that exists at folder/language/name, in the order of
    /// registration. A file that does not exist is left out; one that cannot be read throws XmlException. `language` is
    /// a folder's name of 1 to 64 letters (A-Z), digits, "-" and "_"; every other one, such as "../x", yields an empty
    /// table, as no such folder is looked for.
    Handle<const MessageTable> loadTable(const FilePath& messagesFolder, const String& language) const;
    /// The same of several messages folders: of two messages with one key that of the later folder counts. So an
    /// installation's own messages stand on top of those that came along.
    Handle<const MessageTable> loadTable(const std::vector<FilePath>& messagesFolders, const String& language) const;

private:
    MessageFilesRegistry() = default;
};

}  // namespace vel
