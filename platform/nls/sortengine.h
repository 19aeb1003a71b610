#pragma once

#include <cstddef>
#include <string>

#include "vel/nls/sorttable.h"

namespace vel::nls {

/// Makes keys in one way. Immutable; any number of threads may use one engine. SortTable states the rules.
class SortEngine
{
public:
    SortEngine() = default;
    virtual ~SortEngine() = default;
    SortEngine(const SortEngine&) = delete;
    SortEngine& operator=(const SortEngine&) = delete;

    virtual std::size_t makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength,
                                unsigned char* out, std::size_t capacity) const = 0;
    /// By two keys, unless an engine knows better.
    virtual int compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb,
                        SortStrength strength) const;
    virtual std::string version() const = 0;
    virtual std::size_t memory() const noexcept = 0;
};

/// -1, 0 or 1: byte by byte as unsigned, a prefix being smaller.
int compareBytes(const unsigned char* a, std::size_t na, const unsigned char* b, std::size_t nb) noexcept;

}  // namespace vel::nls
