#include <random>

#include "icureference.h"
#include "loops.h"
#include "vel/transcoding/transcodingencoder.h"

// Pieces of any size, and buffers of any size, give the same bytes as the whole.

namespace {

using namespace transcodingtests;
using vel::NarrowString;
using vel::TranscodingEncoder;
using vel::TranscodingResult;
using vel::UniversalTranscoding;

class TranscodingChunks : public EitherLoops
{};

/// Characters of every kind, in runs as texts have them.
std::wstring mixedText(std::size_t length, unsigned seed)
{
    std::mt19937 random(seed);
    const std::uint32_t areas[][2] = {{0x20, 0x7E},     {0xA0, 0xFF},     {0x410, 0x44F},     {0x3041, 0x3096},
                                      {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}, {0x1F600, 0x1F64F}, {0x20, 0x7E},
                                      {0x0, 0x10FFFF},  {0xD800, 0xDFFF}, {0xC0, 0xCB},       {0x300, 0x30C}};
    std::wstring text;
    while (text.size() < length) {
        const auto& area = areas[random() % std::size(areas)];
        const std::size_t run = 1 + random() % 24;
        for (std::size_t i = 0; i < run; ++i) {
            text += static_cast<wchar_t>(area[0] + random() % (area[1] - area[0] + 1));
        }
    }
    return text;
}

/// All of a text in one piece; ill-formed and unencodable characters are passed over where they are errors.
std::string whole(const UniversalTranscoding& transcoding, const std::wstring& text, vel::EUnencodable policy)
{
    TranscodingEncoder encoder(transcoding, policy);
    NarrowString bytes;
    for (std::size_t done = 0; done < text.size();) {
        const std::optional<std::size_t> fault = encoder.encode(text.data() + done, text.size() - done, bytes);
        done = fault ? done + *fault + 1 : text.size();
    }
    encoder.finish(bytes);
    return bytes.standard();
}

/// Sizes of pieces: always the same one, or random ones.
class Sizes
{
public:
    explicit Sizes(std::size_t fixed) : m_nFixed(fixed) {}
    std::size_t next() { return m_nFixed != 0 ? m_nFixed : 1 + m_tRandom() % 40; }

private:
    std::size_t m_nFixed;
    std::mt19937 m_tRandom{7};
};

void encodePiece(TranscodingEncoder& encoder, std::wstring_view piece, std::size_t capacity, std::string& bytes)
{
    std::string buffer(capacity, '\0');
    for (;;) {
        const TranscodingResult result = encoder.encode(piece.data(), piece.size(), buffer.data(), capacity);
        bytes.append(buffer, 0, result.m_nWritten);
        ASSERT_LE(result.m_nRead, piece.size());
        piece.remove_prefix(result.m_nRead);
        if (result.isComplete()) {
            ASSERT_TRUE(piece.empty());
            return;
        }
        const bool isFault = result.m_eStatus == vel::kTranscodingUnencodable;
        ASSERT_TRUE(isFault || result.m_nWritten > 0) << "no progress";
        piece.remove_prefix(isFault ? 1 : 0);
    }
}

std::string inPieces(TranscodingEncoder& encoder, std::wstring_view text, std::size_t pieceSize, std::size_t capacity)
{
    std::string bytes;
    Sizes sizes(pieceSize);
    while (!text.empty()) {
        const std::wstring_view piece = text.substr(0, sizes.next());
        encodePiece(encoder, piece, capacity, bytes);
        text.remove_prefix(piece.size());
    }
    std::string buffer(capacity, '\0');
    TranscodingResult result;
    do {
        result = encoder.finish(buffer.data(), capacity);
        bytes.append(buffer, 0, result.m_nWritten);
    } while (!result.isComplete());
    return bytes;
}

TEST_P(TranscodingChunks, PiecesOfAnySizeEqualTheWholeForEverySetAndPolicy)
{
    const std::wstring text = mixedText(2000, 1);
    for (const std::string& name : webNames()) {
        const UniversalTranscoding transcoding = transcodingOf(name);
        for (const vel::EUnencodable policy : kPolicies) {
            SCOPED_TRACE(name + ", policy " + std::to_string(policy));
            const std::string expected = whole(transcoding, text, policy);
            TranscodingEncoder encoder(transcoding, policy);
            for (const std::size_t size : {1, 2, 3, 7, 0}) {
                // The same encoder for one text after another.
                ASSERT_EQ(expected, inPieces(encoder, text, size, 1000)) << "pieces of " << size;
            }
            ASSERT_EQ(expected, inPieces(encoder, text, 500, TranscodingEncoder::kLeastCapacity));
        }
    }
}

TEST_P(TranscodingChunks, RoomThatIsShortByOneIsToldAtEveryPosition)
{
    const std::wstring text = mixedText(150, 2);
    for (const char* name :
         {"UTF-8", "UTF-16LE", "UTF-16", "windows-1252", "Shift_JIS", "EUC-JP", "gb18030", "ISO-2022-JP"}) {
        const UniversalTranscoding transcoding = transcodingOf(name);
        for (std::size_t length = 1; length <= text.size(); ++length) {
            const std::size_t size = transcoding.encodedSize(text.data(), length);
            std::string buffer(size, '\0');
            const TranscodingResult enough = transcoding.encode(text.data(), length, buffer.data(), size);
            ASSERT_TRUE(enough.isComplete()) << name << " " << length;
            ASSERT_EQ(length, enough.m_nRead);
            ASSERT_EQ(size, enough.m_nWritten);
            // A block of exactly that size: a sanitizer sees what is written behind it.
            std::string less(size - 1, '\0');
            less.shrink_to_fit();
            const TranscodingResult few = transcoding.encode(text.data(), length, less.data(), less.size());
            ASSERT_EQ(vel::kTranscodingOutputFull, few.m_eStatus) << name << " " << length;
            ASSERT_LE(few.m_nWritten, size - 1);
            ASSERT_EQ(buffer.substr(0, few.m_nWritten), less.substr(0, few.m_nWritten)) << name << " " << length;
        }
    }
}

TEST_P(TranscodingChunks, NothingIsWrittenBehindTheBuffer)
{
    const std::wstring text = mixedText(300, 3);
    for (const std::string& name : webNames()) {
        TranscodingEncoder encoder(transcodingOf(name));
        for (std::size_t capacity = 0; capacity < 200; ++capacity) {
            std::string buffer(capacity + 64, '\x55');
            const TranscodingResult result = encoder.encode(text.data(), text.size(), buffer.data(), capacity);
            ASSERT_LE(result.m_nWritten, capacity);
            ASSERT_EQ(std::string(64, '\x55'), buffer.substr(capacity)) << name << " " << capacity;
        }
    }
}

TRANSCODING_LOOPS(TranscodingChunks);

}  // namespace
