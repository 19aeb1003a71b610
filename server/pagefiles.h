#pragma once

#include <cstddef>
#include <string_view>

namespace server {

/// A file of the page, which is part of the program. Lives as long as the process.
struct PageFile
{
    const char* m_pPath;  ///< "/" for the page itself
    const char* m_pType;  ///< its content type
    const char* m_pTag;   ///< the version of its bytes, as an entity tag with its quotation marks
    const unsigned char* m_pBytes;
    std::size_t m_nSize;
};

/// The file of that path; null when there is none.
const PageFile* findPageFile(std::string_view path) noexcept;

}  // namespace server
