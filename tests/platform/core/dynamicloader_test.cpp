#include "vel/core/dynamicloader.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "vel/core/exception.h"

namespace {

TEST(DynamicLoader, UnloadsAModule)
{
    void* module = dlopen("libm.so.6", RTLD_NOW);
    ASSERT_NE(module, nullptr);
    EXPECT_TRUE(vel::unloadModule(module, vel::kOnErrorReturn));
}

TEST(DynamicLoader, AFailureReturnsOrThrows)
{
    EXPECT_FALSE(vel::unloadModule(nullptr, vel::kOnErrorReturn));
    EXPECT_THROW(vel::unloadModule(nullptr, vel::kOnErrorThrow), vel::Exception);
    EXPECT_EQ(vel::kOnErrorThrow, 0);
    EXPECT_EQ(vel::kOnErrorReturn, 1);
}

}  // namespace
