#pragma once

#include <gtest/gtest.h>

#include "avx2.h"
#include "vel/transcoding/universaltranscoding.h"

namespace transcodingtests {

/// Runs a test with the loops for this machine and with those for every machine.
class EitherLoops : public testing::TestWithParam<bool>
{
protected:
    void SetUp() override { vel::transcoding_details::g_isAvx2Allowed = GetParam(); }
    void TearDown() override { vel::transcoding_details::g_isAvx2Allowed = true; }
};

inline std::string loopsName(const testing::TestParamInfo<bool>& info)
{
    return info.param ? "ThisMachine" : "EveryMachine";
}

#define TRANSCODING_LOOPS(suite) INSTANTIATE_TEST_SUITE_P(Loops, suite, testing::Bool(), loopsName)

inline vel::UniversalTranscoding transcodingOf(const std::string& name)
{
    return vel::UniversalTranscoding(vel::stringFromUtf8(name).value());
}

inline constexpr vel::EUnencodable kPolicies[] = {vel::kUnencodableReference, vel::kUnencodableSubstitute,
                                                  vel::kUnencodableError};

}  // namespace transcodingtests
