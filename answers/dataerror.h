#pragma once

#include <stdexcept>

namespace answers {

/// Data cannot be read or written.
class DataError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

}  // namespace answers
