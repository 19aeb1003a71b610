#include "vel/core/filepath.h"

#include "vel/core/exception.h"

namespace vel {

FilePath FilePath::folder() const
{
    const std::size_t slash = m_sPath.view().rfind(L'/');
    if (slash == String::kNotFound) {
        return {};
    }
    return FilePath(m_sPath.substring(0, slash == 0 ? 1 : slash));
}

String FilePath::fileName() const
{
    const std::size_t slash = m_sPath.view().rfind(L'/');
    return slash == String::kNotFound ? m_sPath : m_sPath.substring(slash + 1);
}

FilePath FilePath::join(const FilePath& other) const
{
    if (isEmpty() || other.isAbsolute()) {
        return other;
    }
    String joined = m_sPath;
    if (!joined.view().ends_with(L'/')) {
        joined += L'/';
    }
    joined += other.m_sPath.view();
    return FilePath(std::move(joined));
}

std::string FilePath::toNative() const
{
    std::string native;
    if (appendWideAsUtf8(m_sPath.view(), native) || native.find('\0') != std::string::npos) {
        throw Exception(Message::text(L"Not usable as a file's path: '%1'").insert(1, m_sPath));
    }
    return native;
}

}  // namespace vel
