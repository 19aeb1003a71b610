#pragma once

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/uenum.h>
#include <unicode/uset.h>

#include <memory>
#include <new>

namespace vel::nls {

/// Owners of ICU's objects.
struct IcuClose
{
    void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
    void operator()(UCollationElements* elements) const noexcept { ucol_closeElements(elements); }
    void operator()(USet* set) const noexcept { uset_close(set); }
    void operator()(UEnumeration* enumeration) const noexcept { uenum_close(enumeration); }
};

using CollatorPtr = std::unique_ptr<UCollator, IcuClose>;
using ElementsPtr = std::unique_ptr<UCollationElements, IcuClose>;
using SetPtr = std::unique_ptr<USet, IcuClose>;
using EnumerationPtr = std::unique_ptr<UEnumeration, IcuClose>;

/// ICU's calls here fail for want of memory only: everything else was examined when the sort was opened.
inline void throwOnFailure(UErrorCode status)
{
    if (U_FAILURE(status)) {
        throw std::bad_alloc();
    }
}

/// A collator of its own with the same sort.
inline CollatorPtr cloneCollator(const UCollator* collator)
{
    UErrorCode status = U_ZERO_ERROR;
    CollatorPtr clone(ucol_clone(collator, &status));
    throwOnFailure(status);
    return clone;
}

}  // namespace vel::nls
