#include "vel/messages/messagefilesregistry.h"

#include <algorithm>
#include <filesystem>
#include <mutex>

namespace vel {

namespace {

constexpr std::size_t kMaxLanguageLength = 64;

struct RegisteredNames
{
    std::mutex m_tMutex;
    std::vector<String> m_tNames;
};

RegisteredNames& registered()
{
    // Never destroyed: static destructors may still ask.
    static RegisteredNames* const kRegistered = new RegisteredNames;
    return *kRegistered;
}

bool isTagCharacter(wchar_t character) noexcept
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z') ||
           (character >= L'0' && character <= L'9') || character == L'-' || character == L'_';
}

/// A language may come from a request: nothing but a plain name becomes part of a path.
bool isFolderOfLanguage(std::wstring_view language) noexcept
{
    return !language.empty() && language.size() <= kMaxLanguageLength &&
           std::all_of(language.begin(), language.end(), isTagCharacter);
}

/// Whether there is nothing of that name. Something that cannot be examined is not absent: loading it tells why.
bool isAbsent(const FilePath& file)
{
    std::error_code error;
    return std::filesystem::status(file.toNative(), error).type() == std::filesystem::file_type::not_found;
}

}  // namespace

MessageFilesRegistry& MessageFilesRegistry::getInstance()
{
    static MessageFilesRegistry instance;
    return instance;
}

void MessageFilesRegistry::registerFile(const String& fileName)
{
    RegisteredNames& all = registered();
    const std::lock_guard<std::mutex> lock(all.m_tMutex);
    if (std::find(all.m_tNames.begin(), all.m_tNames.end(), fileName) == all.m_tNames.end()) {
        all.m_tNames.push_back(fileName);
    }
}

std::vector<String> MessageFilesRegistry::files() const
{
    RegisteredNames& all = registered();
    const std::lock_guard<std::mutex> lock(all.m_tMutex);
    return all.m_tNames;
}

Handle<const MessageTable> MessageFilesRegistry::loadTable(const FilePath& messagesFolder, const String& language) const
{
    return loadTable(std::vector<FilePath>{messagesFolder}, language);
}

Handle<const MessageTable> MessageFilesRegistry::loadTable(const std::vector<FilePath>& messagesFolders,
                                                           const String& language) const
{
    const Handle<MessageTable> table = makeHandle<MessageTable>(language);
    if (!isFolderOfLanguage(language.view())) {
        return table;
    }
    const std::vector<String> names = files();
    for (const FilePath& messagesFolder : messagesFolders) {
        const FilePath folder = messagesFolder.join(FilePath(language));
        for (const String& name : names) {
            const FilePath file = folder.join(FilePath(name));
            if (!isAbsent(file)) {
                table->load(file);
            }
        }
    }
    return table;
}

}  // namespace vel
