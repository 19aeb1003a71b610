#include <unicode/uclean.h>

#include <cstdlib>

#include "codecs.h"
#include "faileverywhere.h"
#include "loops.h"
#include "namedcoding.h"
#include "vel/transcoding/transcodingencoder.h"

// Memory that runs out at every possible moment: nothing leaks, and the next attempt works. ICU's own memory fails too,
// which must be arranged before its first use: so this is a program of its own.

namespace {

using namespace testsupport;
using namespace transcodingtests;
using vel::NarrowString;
using vel::String;

std::ptrdiff_t g_icuBlocks = 0;
std::size_t g_icuAllocations = 0;
std::size_t g_icuFailFrom = static_cast<std::size_t>(-1);

bool isIcuOutOfMemory()
{
    return g_icuAllocations++ >= g_icuFailFrom;
}

void* icuAllocate(const void*, std::size_t size)
{
    void* block = isIcuOutOfMemory() ? nullptr : std::malloc(size == 0 ? 1 : size);
    g_icuBlocks += block != nullptr ? 1 : 0;
    return block;
}

void* icuReallocate(const void*, void* block, std::size_t size)
{
    void* moved = isIcuOutOfMemory() ? nullptr : std::realloc(block, size == 0 ? 1 : size);
    g_icuBlocks += block == nullptr && moved != nullptr ? 1 : 0;
    return moved;
}

void icuFree(const void*, void* block)
{
    g_icuBlocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

class TranscodingAllocations : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        UErrorCode error = U_ZERO_ERROR;
        u_setMemoryFunctions(nullptr, icuAllocate, icuReallocate, icuFree, &error);
        ASSERT_TRUE(U_SUCCESS(error));
    }
};

const char* const kSets[] = {"UTF-8",      "UTF-16", "windows-1252", "Shift_JIS",
                             "Big5-HKSCS", "EUC-JP", "gb18030",      "ISO-2022-JP"};

/// Builds what the first use of a set builds, which is not kept here.
void build(const char* name)
{
    using namespace vel::transcoding_details;
    const ConverterPtr converter = openConverter(name);
    if (converter == nullptr) {
        // ICU hides some of its own failures behind other errors.
        throw std::bad_alloc();
    }
    UErrorCode error = U_ZERO_ERROR;
    const std::string icuName = ucnv_getName(converter.get(), &error);
    const vel::Handle<const Codec> codec = buildCodec(icuName, *converter);
    const ConverterTraits traits = codec.isNull() ? traitsOf(name) : ConverterTraits();
    NamedCoding coding(L"a name that is long enough for the heap", icuName, codec, traits);
}

TEST_F(TranscodingAllocations, BuildingATableLeaksNothing)
{
    for (const char* name : kSets) {
        SCOPED_TRACE(name);
        build(name);
        const std::ptrdiff_t before = outstandingBlocks();
        failEverywhere([&] { build(name); }, [&] { EXPECT_EQ(before, outstandingBlocks()); });
        EXPECT_EQ(before, outstandingBlocks());
    }
}

TEST_F(TranscodingAllocations, FirstUseOfANameFailsAndWorksTheNextTime)
{
    // Every number of allocations needs a name that was not used: spellings are endless.
    for (std::size_t nth = 0, failures = 1; failures > 0; ++nth) {
        failures = 0;
        const String name(std::wstring(nth % 40, L'-') + L"windows-1251" + std::wstring(nth / 40, L'-'));
        const std::ptrdiff_t before = outstandingBlocks();
        if (failsAt(nth, [&] { const vel::UniversalTranscoding transcoding(name); })) {
            ++failures;
            // The codec may be there already, in its map.
            EXPECT_LE(outstandingBlocks(), before + 8);
        }
        NarrowString bytes;
        EXPECT_FALSE(vel::UniversalTranscoding(name).encode(L"\u0416", bytes));
        ASSERT_EQ(NarrowString("\xC6"), bytes);
        ASSERT_LT(nth, 1000U);
    }
}

TEST_F(TranscodingAllocations, EncodingAndDecodingLeakNothing)
{
    const std::wstring page(3000, L'\u3042');
    for (const char* name : kSets) {
        SCOPED_TRACE(name);
        const vel::UniversalTranscoding transcoding = transcodingOf(name);
        NarrowString whole;
        transcoding.encode(page.data(), page.size(), whole);
        const std::ptrdiff_t before = outstandingBlocks();
        failEverywhere(
            [&] {
                NarrowString bytes;
                transcoding.encode(page.data(), page.size(), bytes);
                String text;
                transcoding.decode(bytes.data(), bytes.length(), text);
            },
            [&] { EXPECT_EQ(before, outstandingBlocks()); });
    }
}

/// ICU's own memory. Its data stay loaded, so a success may leave more blocks than before; a failure must not.
TEST_F(TranscodingAllocations, IcuMayRunOutOfMemoryToo)
{
    const std::wstring page(300, L'\u3042');
    for (const char* name : kSets) {
        const vel::UniversalTranscoding transcoding = transcodingOf(name);
        build(name);
        const std::ptrdiff_t before = g_icuBlocks;
        bool isDone = false;
        for (std::size_t nth = 0; !isDone; ++nth) {
            g_icuAllocations = 0;
            g_icuFailFrom = nth;
            try {
                build(name);
                NarrowString bytes;
                transcoding.encode(page.data(), page.size(), bytes);
                isDone = g_icuAllocations <= nth;
            } catch (const std::bad_alloc&) {}
            g_icuFailFrom = static_cast<std::size_t>(-1);
            ASSERT_EQ(before, g_icuBlocks) << name << ", allocation " << nth;
            ASSERT_LT(nth, 20000U);
        }
    }
}

TEST_F(TranscodingAllocations, CopiesAndKnownNamesTakeNoMemory)
{
    const String name = L"Shift_JIS";
    const vel::UniversalTranscoding first(name);
    const AllocationCount count;
    const vel::UniversalTranscoding second(name);
    vel::UniversalTranscoding copy = second;
    copy = first;
    char bytes[64];
    const wchar_t text[] = L"\u3042\u00E9";
    EXPECT_TRUE(copy.encode(text, 2, bytes, sizeof bytes).isComplete());
    EXPECT_EQ(0U, count.value());
}

}  // namespace
