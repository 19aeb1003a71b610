#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string_view>

#include "utf8reference.h"
#include "vel/core/utf8.h"

// Every byte sequence of one, two and three bytes, and those of four that stand at the borders of the byte ranges,
// against the slow implementation.
namespace {

/// Whether both implementations give the same characters and the same fault.
bool agree(std::string_view bytes)
{
    wchar_t actual[4];
    std::size_t fault = 0;
    const std::size_t written = vel::decodeUtf8(bytes, actual, &fault);
    std::size_t offset = 0;
    std::size_t count = 0;
    std::uint32_t value = 0;
    while (offset < bytes.size()) {
        const std::size_t length = utf8reference::first(bytes.substr(offset), value);
        if (length == 0) {
            return fault == offset && written == count;
        }
        if (count >= written || static_cast<std::uint32_t>(actual[count]) != value) {
            return false;
        }
        ++count;
        offset += length;
    }
    return fault == std::string_view::npos && written == count;
}

void expectAgreement(const unsigned char* bytes, std::size_t size)
{
    char text[4];
    std::memcpy(text, bytes, size);
    if (!agree(std::string_view(text, size))) {
        ADD_FAILURE() << testing::PrintToString(std::string(text, size));
    }
}

TEST(Utf8Exhaustive, OneAndTwoBytes)
{
    for (unsigned a = 0; a < 256; ++a) {
        const unsigned char one[] = {static_cast<unsigned char>(a)};
        expectAgreement(one, 1);
        for (unsigned b = 0; b < 256; ++b) {
            const unsigned char two[] = {static_cast<unsigned char>(a), static_cast<unsigned char>(b)};
            expectAgreement(two, 2);
        }
    }
}

TEST(Utf8Exhaustive, ThreeBytes)
{
    for (unsigned each = 0; each < 256 * 256 * 256; ++each) {
        const unsigned char three[] = {static_cast<unsigned char>(each >> 16), static_cast<unsigned char>(each >> 8),
                                       static_cast<unsigned char>(each)};
        expectAgreement(three, 3);
    }
}

TEST(Utf8Exhaustive, FourBytesAtTheBorders)
{
    constexpr unsigned char kBorders[] = {0x00, 0x41, 0x7F, 0x80, 0x81, 0x8F, 0x90, 0x9F,
                                          0xA0, 0xBE, 0xBF, 0xC0, 0xC2, 0xE0, 0xF0, 0xFF};
    for (unsigned lead = 0; lead < 256; ++lead) {
        for (unsigned second = 0; second < 256; ++second) {
            for (const unsigned char third : kBorders) {
                for (const unsigned char fourth : kBorders) {
                    const unsigned char four[] = {static_cast<unsigned char>(lead), static_cast<unsigned char>(second),
                                                  third, fourth};
                    expectAgreement(four, 4);
                }
            }
        }
    }
}

}  // namespace
