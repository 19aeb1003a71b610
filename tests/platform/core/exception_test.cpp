#include "vel/core/exception.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "failingallocator.h"
#include "printers.h"

namespace {

using vel::Exception;
using vel::Message;

static_assert(std::is_nothrow_copy_constructible_v<Exception>);
static_assert(std::is_nothrow_copy_assignable_v<Exception>);
static_assert(std::is_base_of_v<std::exception, Exception>);

TEST(Exception, WhatIsTheMessageInUtf8)
{
    const Exception exception(Message::text(L"Na\u00EFve '%1'").insert(1, L"\u20AC\U0001F600"));
    EXPECT_STREQ(exception.what(), "Na\xC3\xAFve '\xE2\x82\xAC\xF0\x9F\x98\x80'");
    EXPECT_EQ(exception.message().keyOrText(), L"Na\u00EFve '%1'");
}

TEST(Exception, WhatShowsAReplacementForWhatUtf8CannotHold)
{
    const wchar_t text[] = {L'a', static_cast<wchar_t>(0xD800), L'b', 0};
    EXPECT_STREQ(Exception(Message::text(text)).what(),
                 "a\xEF\xBF\xBD"
                 "b");
}

TEST(Exception, CopiesShareTheMessage)
{
    const Exception original(Message::external(L"kmsgSomething").insert(1, L"x"));
    const testsupport::AllocationCount allocations;
    const Exception copy = original;
    EXPECT_EQ(allocations.value(), 0U);
    EXPECT_EQ(&copy.message(), &original.message());
    EXPECT_STREQ(copy.what(), "kmsgSomething(x)");
}

TEST(Exception, IsCaughtAsAStandardException)
{
    try {
        throw Exception(Message::text(L"down"));
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "down");
        return;
    }
    FAIL() << "not caught";
}

TEST(InvalidHandleException, NamesTheTypeReadably)
{
    EXPECT_STREQ(vel::InvalidHandleException(typeid(Exception).name()).what(), "Invalid handle: vel::Exception");
    EXPECT_STREQ(vel::InvalidHandleException("no mangled name").what(), "Invalid handle: no mangled name");
}

}  // namespace
