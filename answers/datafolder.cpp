#include "answers/datafolder.h"

#include <cstdlib>
#include <filesystem>
#include <string>

#include "answers/dataerror.h"
#include "answers/text.h"

namespace answers {

namespace {

constexpr const char* ksInstalledData = WEBI18N_INSTALLED_DATA;
constexpr const char* ksVariable = "WEBI18N_DATA";

vel::String wideName(const std::string& utf8, const std::string& where)
{
    std::size_t offset = 0;
    auto wide = vel::stringFromUtf8(utf8, &offset);
    if (!wide) {
        throw DataError(where + ": invalid UTF-8 at byte offset " + std::to_string(offset));
    }
    return *std::move(wide);
}

bool isFolder(const std::filesystem::path& path)
{
    std::error_code fault;
    return std::filesystem::is_directory(path, fault);
}

/// Empty when the system does not tell where this program is.
std::filesystem::path besideProgram()
{
    std::error_code fault;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", fault);
    return fault ? std::filesystem::path() : program.parent_path().parent_path() / "share/webi18n";
}

vel::FilePath ownFolder()
{
    const std::filesystem::path beside = besideProgram();
    for (const std::filesystem::path& candidate : {beside, std::filesystem::path(ksInstalledData)}) {
        if (isFolder(candidate)) {
            return vel::FilePath(wideName(candidate.string(), "data folder"));
        }
    }
    throw DataError("no data folder: neither " + beside.string() + " nor " + ksInstalledData +
                    " is one; name it with --data DIR, or take --data none to start empty");
}

}  // namespace

std::optional<vel::FilePath> findDataFolder(const std::optional<vel::String>& given)
{
    std::optional<vel::String> named = given;
    if (const char* variable = std::getenv(ksVariable); !named && variable != nullptr && *variable != '\0') {
        named = wideName(variable, ksVariable);
    }
    if (!named) {
        return ownFolder();
    }
    if (*named == L"none") {
        return std::nullopt;
    }
    const vel::FilePath folder(*named);
    if (!isFolder(folder.toNative())) {
        throw DataError(utf8Text(*named) + ": the data folder is no folder that can be read");
    }
    return folder;
}

}  // namespace answers
