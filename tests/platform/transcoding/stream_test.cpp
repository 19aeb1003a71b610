#include "codecs.h"
#include "failingallocator.h"
#include "icureference.h"
#include "loops.h"
#include "setmapping.h"
#include "vel/transcoding/transcodingencoder.h"

// What a long response costs in memory: nothing that grows. And what a set's table costs.

namespace {

using namespace transcodingtests;
using vel::TranscodingEncoder;
using vel::TranscodingResult;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kStreamed = std::size_t{64} << 20;
#else
constexpr std::size_t kStreamed = std::size_t{1} << 30;
#endif

/// Bytes that come out until `least` are there.
std::size_t stream(TranscodingEncoder& encoder, std::wstring_view page, std::size_t least)
{
    static char s_buffer[16384];
    std::size_t written = 0;
    while (written < least) {
        for (std::size_t done = 0; done < page.size();) {
            const TranscodingResult result =
                encoder.encode(page.data() + done, page.size() - done, s_buffer, sizeof s_buffer);
            done += result.m_nRead;
            written += result.m_nWritten;
        }
    }
    return written;
}

TEST(TranscodingStream, AGigabyteTakesNoMemory)
{
    const std::wstring page = std::wstring(4000, L'a') + std::wstring(1000, L'\u044F') + std::wstring(500, L'\u4E00');
    TranscodingEncoder encoder(transcodingOf("UTF-8"));
    const std::ptrdiff_t blocks = testsupport::outstandingBlocks();
    const testsupport::AllocationCount count;
    EXPECT_LE(kStreamed, stream(encoder, page, kStreamed));
    EXPECT_EQ(0U, count.value());
    EXPECT_EQ(blocks, testsupport::outstandingBlocks());
}

TEST(TranscodingStream, StatefulAndDoubleByteSetsTakeNoMoreThanAtFirst)
{
    const std::wstring page = std::wstring(400, L'a') + std::wstring(100, L'\u3042') + std::wstring(10, L'\u05D0');
    for (const char* name : {"ISO-2022-JP", "Shift_JIS", "gb18030", "KOI8-R"}) {
        TranscodingEncoder encoder(transcodingOf(name));
        stream(encoder, page, 100000);
        const testsupport::AllocationCount count;
        stream(encoder, page, kStreamed / 256);
        EXPECT_EQ(0U, count.value()) << name;
    }
}

std::size_t tableBytes(const std::string& name)
{
    using namespace vel::transcoding_details;
    const ConverterPtr converter = openConverter(name.c_str());
    UErrorCode error = U_ZERO_ERROR;
    const vel::Handle<const Codec> codec = buildCodec(ucnv_getName(converter.get(), &error), *converter);
    return codec.isNull() ? 0 : codec->tableBytes();
}

TEST(TranscodingTables, TakeAtMost160KibibytesForEveryDoubleByteSet)
{
    constexpr std::size_t kLimit = 160 * 1024;
    std::size_t doubleByteSets = 0;
    for (const std::string& name : allIcuNames()) {
        const std::size_t bytes = tableBytes(name);
        EXPECT_GE(kLimit, bytes) << name;
        doubleByteSets += bytes > 32 * 1024 ? 1 : 0;
    }
    EXPECT_LT(10U, doubleByteSets) << "the test tests nothing";
}

TEST(TranscodingTables, SetsOfTheWebHaveLoopsOfTheirOwn)
{
    for (const char* name : {"windows-1252", "KOI8-R", "Shift_JIS", "EUC-JP", "EUC-KR", "windows-949", "Big5",
                             "Big5-HKSCS", "GBK", "GB2312", "gb18030"}) {
        EXPECT_LT(0U, tableBytes(name)) << name;
        RecordProperty(std::string("bytes_") + name, static_cast<int>(tableBytes(name)));
    }
}

}  // namespace
