#pragma once

#include <string>
#include <string_view>

#include "vel/core/api.h"
#include "vel/core/string.h"

namespace vel {

/// The path of a file as wide text with "/" between its parts. The file system sees it as UTF-8. A value.
class WEBI18N_API FilePath
{
public:
    FilePath() = default;
    FilePath(String path) : m_sPath(std::move(path)) {}

    const String& toString() const noexcept { return m_sPath; }
    bool isEmpty() const noexcept { return m_sPath.isEmpty(); }
    bool isAbsolute() const noexcept { return m_sPath.startsWith(L"/"); }

    /// The folder that holds it, without a slash at its end.
    ///
    ///     "/etc/a.xml" -> "/etc"    "/a.xml" -> "/"    "a.xml" -> ""    "b/" -> "b"    "" -> ""
    FilePath folder() const;
    /// The part after the last slash.
    String fileName() const;
    /// `other` as seen from this folder: `other` itself when it is absolute or this is empty.
    ///
    ///     "/etc", "a.xml" -> "/etc/a.xml"    "/etc", "/b" -> "/b"    "", "a" -> "a"    "/", "a" -> "/a"
    FilePath join(const FilePath& other) const;

    /// The bytes for the file system. Throws Exception for text that has no UTF-8 form or holds a zero character, which
    /// would silently name another file.
    std::string toNative() const;

    friend bool operator==(const FilePath&, const FilePath&) noexcept = default;

private:
    String m_sPath;
};

}  // namespace vel
