#include <algorithm>

#include "codecs.h"
#include "multibytebuilder.h"
#include "multibyteloop.h"

namespace vel::transcoding_details {

namespace {

/// The lead byte of three-byte sequences (the second plane of EUC-JP).
constexpr std::uint32_t kThreeByteLead = 0x8F;
/// Values of the rows from here on are places in the list of characters beyond the Basic Multilingual Plane, which has
/// only surrogates here itself.
constexpr std::uint32_t kSupplementary = 0xD800;
constexpr std::size_t kMostSupplementary = 0x800;

/// The only plane beyond the Basic Multilingual Plane that sets of two bytes have characters of.
constexpr std::uint32_t kIdeographicPlane = 0x20000;

struct SupplementaryCharacter
{
    std::uint16_t m_nCode;  ///< in its plane
    std::uint16_t m_nBytes;
};

constexpr bool isIdeographic(std::uint32_t code) noexcept
{
    return code >> 16 == kIdeographicPlane >> 16;
}

struct DoubleByteTables
{
    /// False when the bytes have no place in the tables.
    bool add(const EncodedCharacter& character);
    bool buildDecoding(const SetMapping& mapping);
    void close();

    MultiByteTables m_tCommon;
    PagedTable<std::uint16_t> m_tThreeBytes;  ///< the second and third byte of three, the second one lower
    DoubleByteRows m_tThreeByteRows;
    std::vector<SupplementaryCharacter> m_vEncoded;  ///< two bytes each, in rising order of the codes
    std::vector<std::uint16_t> m_vDecoded;           ///< what the rows' places mean, in the plane
    bool m_bThreeBytes = false;
    bool m_bHoldsAll = true;
};

class DoubleByteCodec final : public Codec
{
public:
    DoubleByteCodec(DoubleByteTables tables, Replacements replacements)
        : Codec(std::move(replacements)), m_tTables(std::move(tables))
    {}

    EncodeRun encode(const wchar_t* in, const wchar_t* inEnd, char* out, char* outEnd) const noexcept override
    {
        return encodeMultiByte(m_tTables.m_tCommon, in, inEnd, out, outEnd,
                               [this](std::uint32_t code) noexcept { return encodeRare(code); });
    }

    DecodeRun decode(const char* in, const char* inEnd, wchar_t* out, wchar_t* outEnd) const noexcept override
    {
        return decodeMultiByte(
            m_tTables.m_tCommon, in, inEnd, out, outEnd,
            [this](const char* from, const char* end) noexcept { return decodeThreeBytes(from, end); },
            [this](std::uint32_t value) noexcept {
                const bool isPlace = value >= kSupplementary && value < kSupplementary + kMostSupplementary;
                return isPlace ? kIdeographicPlane + m_tTables.m_vDecoded[value - kSupplementary] : value;
            });
    }

    std::size_t tableBytes() const noexcept override
    {
        return sizeof *this + m_tTables.m_tCommon.bytes() + m_tTables.m_tThreeBytes.bytes() +
               m_tTables.m_tThreeByteRows.bytes() + m_tTables.m_vEncoded.capacity() * sizeof(SupplementaryCharacter) +
               m_tTables.m_vDecoded.capacity() * sizeof(std::uint16_t);
    }

private:
    ByteSequence encodeRare(std::uint32_t code) const noexcept
    {
        if (code < 0x10000) {
            const std::uint32_t value = m_tTables.m_tThreeBytes[code];
            return value == 0 ? ByteSequence() : ByteSequence{kThreeByteLead << 16 | value, 3};
        }
        if (!isIdeographic(code)) {
            return {};
        }
        const auto place =
            std::lower_bound(m_tTables.m_vEncoded.begin(), m_tTables.m_vEncoded.end(), code & 0xFFFF,
                             [](const SupplementaryCharacter& a, std::uint32_t b) { return a.m_nCode < b; });
        const bool isFound = place != m_tTables.m_vEncoded.end() && place->m_nCode == (code & 0xFFFF);
        return isFound ? ByteSequence{place->m_nBytes, 2} : ByteSequence();
    }

    RareCharacter decodeThreeBytes(const char* in, const char* inEnd) const noexcept
    {
        if (!m_tTables.m_bThreeBytes || byteOf(*in) != kThreeByteLead || inEnd - in < 3) {
            return {};
        }
        const std::uint16_t value = m_tTables.m_tThreeByteRows.find(byteOf(in[1]), byteOf(in[2]));
        return value == kNoCharacter ? RareCharacter() : RareCharacter{value, 3};
    }

    DoubleByteTables m_tTables;
};

bool DoubleByteTables::add(const EncodedCharacter& character)
{
    const ByteSequence bytes = character.m_tBytes;
    if (character.m_nCode > 0xFFFF) {
        m_vEncoded.push_back(
            {static_cast<std::uint16_t>(character.m_nCode), static_cast<std::uint16_t>(bytes.m_nBytes)});
        return bytes.m_nLength == 2 && isIdeographic(character.m_nCode);
    }
    if (bytes.m_nLength == 3) {
        m_tThreeBytes.set(character.m_nCode, static_cast<std::uint16_t>(bytes.m_nBytes));
        return bytes.m_nBytes >> 16 == kThreeByteLead;
    }
    if (bytes.m_nBytes == 0) {
        m_tCommon.m_bNull = true;
        return character.m_nCode == 0 && bytes.m_nLength == 1;
    }
    m_tCommon.m_tBytes.set(character.m_nCode, storedValue(bytes));
    // Two bytes of which the second one is zero would read as one.
    return bytes.m_nLength == 1 || storedValue(bytes) > 0xFF;
}

/// The value of the rows for two or three bytes; remembers what is beyond the plane.
std::uint16_t decodedValue(const SetMapping& mapping, ByteSequence bytes, DoubleByteTables& tables)
{
    const DecodedSequence decoded = mapping.decode(bytes);
    if (decoded.m_eKind != DecodedSequence::kCharacter) {
        return kNoCharacter;
    }
    if (decoded.m_nCode < 0x10000) {
        return static_cast<std::uint16_t>(decoded.m_nCode);
    }
    if (!isIdeographic(decoded.m_nCode)) {
        tables.m_bHoldsAll = false;
        return kNoCharacter;
    }
    tables.m_vDecoded.push_back(static_cast<std::uint16_t>(decoded.m_nCode));
    return static_cast<std::uint16_t>(kSupplementary + tables.m_vDecoded.size() - 1);
}

/// The bytes behind 0x8F that a third one follows.
std::vector<std::uint32_t> secondLeads(const SetMapping& mapping)
{
    std::vector<std::uint32_t> leads;
    for (std::uint32_t byte = 0; byte < 0x100; ++byte) {
        if (mapping.decode({kThreeByteLead << 8 | byte, 2}).m_eKind == DecodedSequence::kIncomplete) {
            leads.push_back(byte);
        }
    }
    return leads;
}

bool DoubleByteTables::buildDecoding(const SetMapping& mapping)
{
    const auto leads = buildSingles(mapping, m_tCommon);
    if (!leads) {
        return false;
    }
    m_tCommon.m_tDoubles.build(*leads, leastTrail(mapping, *leads), [&](std::uint32_t lead, std::uint32_t trail) {
        return decodedValue(mapping, {lead << 8 | trail, 2}, *this);
    });
    if (std::find(leads->begin(), leads->end(), kThreeByteLead) != leads->end()) {
        const std::vector<std::uint32_t> seconds = secondLeads(mapping);
        m_bThreeBytes = !seconds.empty();
        m_tThreeByteRows.build(seconds, 0xA1, [&](std::uint32_t second, std::uint32_t third) {
            return decodedValue(mapping, {kThreeByteLead << 16 | second << 8 | third, 3}, *this);
        });
    }
    return m_bHoldsAll && m_vDecoded.size() <= kMostSupplementary;
}

void DoubleByteTables::close()
{
    m_tThreeBytes.close();
    m_vEncoded.shrink_to_fit();
    m_vDecoded.shrink_to_fit();
}

}  // namespace

Handle<const Codec> buildDoubleByteCodec(const SetMapping& mapping)
{
    return buildMultiByteCodec<DoubleByteCodec, DoubleByteTables>(mapping, 0x10FFFF, 3);
}

}  // namespace vel::transcoding_details
