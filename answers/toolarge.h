#pragma once

#include <exception>

namespace answers {

/// An answer would be larger than whoever asked for it allows.
class TooLarge : public std::exception
{
public:
    const char* what() const noexcept override { return "the answer would be too large"; }
};

}  // namespace answers
