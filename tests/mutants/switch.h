#pragma once

#include <type_traits>

// What the sources with mutants in them ask; included before all else of such a source.
namespace mutants {

/// Whether the environment's MUTANT is that number. Notes that the place was reached.
bool isChosen(unsigned number) noexcept;

/// The same for functions that the compiler may call too: for it no mutant is chosen.
constexpr bool isChosenWhenRun(unsigned number) noexcept
{
    return !std::is_constant_evaluated() && isChosen(number);
}

}  // namespace mutants
