#include <algorithm>

#include "codecs.h"
#include "multibytebuilder.h"
#include "multibyteloop.h"

namespace vel::transcoding_details {

namespace {

// Four-byte sequences are numbered from 0x81308130 on: the second and fourth byte have ten values, the third one 126.
constexpr std::uint32_t kSupplementaryNumber = 189000;  // 0x90308130, U+10000
constexpr std::uint32_t kBasicNumbers = 39420;          // up to 0x8431A439, U+FFFF

ByteSequence sequenceOf(std::uint32_t number) noexcept
{
    const std::uint32_t fourth = 0x30 + number % 10;
    const std::uint32_t third = 0x81 + number / 10 % 126;
    const std::uint32_t second = 0x30 + number / 1260 % 10;
    const std::uint32_t first = 0x81 + number / 12600;
    return {first << 24 | second << 16 | third << 8 | fourth, 4};
}

std::uint32_t numberOf(std::uint32_t bytes) noexcept
{
    const std::uint32_t first = (bytes >> 24) - 0x81;
    const std::uint32_t second = (bytes >> 16 & 0xFF) - 0x30;
    const std::uint32_t third = (bytes >> 8 & 0xFF) - 0x81;
    return ((first * 10 + second) * 126 + third) * 10 + ((bytes & 0xFF) - 0x30);
}

bool isFourByteSequence(const char* in) noexcept
{
    const auto isDigit = [](unsigned byte) { return byte >= 0x30 && byte <= 0x39; };
    const auto isLead = [](unsigned byte) { return byte >= 0x81 && byte <= 0xFE; };
    return isLead(byteOf(in[0])) && isDigit(byteOf(in[1])) && isLead(byteOf(in[2])) && isDigit(byteOf(in[3]));
}

/// Neighbours whose values are neighbours too: of characters to numbers, or of numbers to characters.
struct Range
{
    std::uint16_t m_nFirst;
    std::uint16_t m_nLast;
    std::uint16_t m_nValue;  ///< of the first
};

class Ranges
{
public:
    /// `key` is above all keys before.
    void add(std::uint32_t key, std::uint32_t value)
    {
        if (!m_vRanges.empty()) {
            Range& last = m_vRanges.back();
            if (last.m_nLast + 1U == key && last.m_nValue + (key - last.m_nFirst) == value) {
                last.m_nLast = static_cast<std::uint16_t>(key);
                return;
            }
        }
        const auto narrow = [](std::uint32_t number) { return static_cast<std::uint16_t>(number); };
        m_vRanges.push_back({narrow(key), narrow(key), narrow(value)});
    }
    void close() { m_vRanges.shrink_to_fit(); }

    /// `key` below 65536. False when there is no value.
    bool find(std::uint32_t key, std::uint32_t& value) const noexcept
    {
        const auto place = std::lower_bound(m_vRanges.begin(), m_vRanges.end(), key,
                                            [](const Range& range, std::uint32_t at) { return range.m_nLast < at; });
        if (place == m_vRanges.end() || key < place->m_nFirst) {
            return false;
        }
        value = place->m_nValue + (key - place->m_nFirst);
        return true;
    }

    std::size_t bytes() const noexcept { return m_vRanges.capacity() * sizeof(Range); }

private:
    std::vector<Range> m_vRanges;
};

struct Gb18030Tables
{
    /// False when the bytes have no place in the tables.
    bool add(const EncodedCharacter& character);
    bool buildDecoding(const SetMapping& mapping);
    void close();

    MultiByteTables m_tCommon;
    Ranges m_tNumbers;     ///< of characters without two bytes
    Ranges m_tCharacters;  ///< of numbers
};

/// One, two and four bytes: the tables have the first two, and the rest is counted.
class Gb18030Codec final : public Codec
{
public:
    Gb18030Codec(Gb18030Tables tables, Replacements replacements)
        : Codec(std::move(replacements)), m_tTables(std::move(tables))
    {}

    EncodeRun encode(const wchar_t* in, const wchar_t* inEnd, char* out, char* outEnd) const noexcept override
    {
        return encodeMultiByte(m_tTables.m_tCommon, in, inEnd, out, outEnd,
                               [this](std::uint32_t code) noexcept { return encodeFourBytes(code); });
    }

    DecodeRun decode(const char* in, const char* inEnd, wchar_t* out, wchar_t* outEnd) const noexcept override
    {
        return decodeMultiByte(
            m_tTables.m_tCommon, in, inEnd, out, outEnd,
            [this](const char* from, const char* end) noexcept { return decodeFourBytes(from, end); },
            [](std::uint32_t value) noexcept { return value; });
    }

    std::size_t tableBytes() const noexcept override
    {
        return sizeof *this + m_tTables.m_tCommon.bytes() + m_tTables.m_tNumbers.bytes() +
               m_tTables.m_tCharacters.bytes();
    }

private:
    ByteSequence encodeFourBytes(std::uint32_t code) const noexcept
    {
        if (code > 0xFFFF) {
            return code > 0x10FFFF ? ByteSequence() : sequenceOf(kSupplementaryNumber + (code - 0x10000));
        }
        std::uint32_t number = 0;
        return m_tTables.m_tNumbers.find(code, number) ? sequenceOf(number) : ByteSequence();
    }

    RareCharacter decodeFourBytes(const char* in, const char* inEnd) const noexcept
    {
        if (inEnd - in < 4 || !isFourByteSequence(in)) {
            return {};
        }
        const std::uint32_t number =
            numberOf(byteOf(in[0]) << 24 | byteOf(in[1]) << 16 | byteOf(in[2]) << 8 | byteOf(in[3]));
        if (number >= kSupplementaryNumber && number < kSupplementaryNumber + 0x100000) {
            return {number - kSupplementaryNumber + 0x10000, 4};
        }
        std::uint32_t code = 0;
        return number < kBasicNumbers && m_tTables.m_tCharacters.find(number, code) ? RareCharacter{code, 4}
                                                                                    : RareCharacter();
    }

    Gb18030Tables m_tTables;
};

bool Gb18030Tables::add(const EncodedCharacter& character)
{
    const ByteSequence bytes = character.m_tBytes;
    if (bytes.m_nLength == 4) {
        const std::uint32_t number = numberOf(bytes.m_nBytes);
        m_tNumbers.add(character.m_nCode, number);
        return number < kBasicNumbers;
    }
    if (bytes.m_nBytes == 0) {
        m_tCommon.m_bNull = true;
        return character.m_nCode == 0;
    }
    m_tCommon.m_tBytes.set(character.m_nCode, storedValue(bytes));
    return bytes.m_nLength < 3;
}

bool Gb18030Tables::buildDecoding(const SetMapping& mapping)
{
    const auto leads = buildSingles(mapping, m_tCommon);
    if (!leads) {
        return false;
    }
    m_tCommon.m_tDoubles.build(*leads, 0x40, [&](std::uint32_t lead, std::uint32_t trail) {
        const DecodedSequence decoded = mapping.decode({lead << 8 | trail, 2});
        return decoded.m_eKind == DecodedSequence::kCharacter ? static_cast<std::uint16_t>(decoded.m_nCode)
                                                              : kNoCharacter;
    });
    for (std::uint32_t number = 0; number < kBasicNumbers; ++number) {
        const DecodedSequence decoded = mapping.decode(sequenceOf(number));
        if (decoded.m_eKind == DecodedSequence::kCharacter) {
            m_tCharacters.add(number, decoded.m_nCode);
        }
    }
    return true;
}

void Gb18030Tables::close()
{
    m_tNumbers.close();
    m_tCharacters.close();
}

}  // namespace

Handle<const Codec> buildGb18030Codec(const SetMapping& mapping)
{
    return buildMultiByteCodec<Gb18030Codec, Gb18030Tables>(mapping, 0xFFFF, 4);
}

}  // namespace vel::transcoding_details
