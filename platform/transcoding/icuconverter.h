#pragma once

#include <unicode/ucnv.h>

#include <memory>

namespace vel::transcoding_details {

struct CloseConverter
{
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};

/// One of ICU's converters, for one thread at a time.
using ConverterPtr = std::unique_ptr<UConverter, CloseConverter>;

/// Opens ICU's converter of that name or alias, without mappings that only resemble the character, and stopping at what
/// it cannot convert. Null when there is none. Throws std::bad_alloc.
ConverterPtr openConverter(const char* name);

/// The same for a name that was found before: what can fail is memory, so std::bad_alloc in place of null.
ConverterPtr reopenConverter(const char* name);

/// What the bytes of replacements need of a converter.
struct ConverterTraits
{
    bool m_bReference = false;             ///< has all characters of references
    bool m_bReplacementCharacter = false;  ///< has U+FFFD
};

/// `name`: of a converter that exists. Throws std::bad_alloc.
ConverterTraits traitsOf(const char* name);

/// Throws std::bad_alloc when that is the error.
void checkMemory(UErrorCode error);

}  // namespace vel::transcoding_details
