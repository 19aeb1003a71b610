#pragma once

namespace vel {

/// What an operation does that fails: throw, or return its failure value.
enum EOnError
{
    kOnErrorThrow = 0,
    kOnErrorReturn = 1
};

}  // namespace vel
