#include "multibyteloop.h"

namespace vel::transcoding_details {

std::optional<std::vector<std::uint32_t>> buildSingles(const SetMapping& mapping, MultiByteTables& tables)
{
    std::vector<std::uint32_t> leads;
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        const DecodedSequence decoded = mapping.decode({byte, 1});
        if (decoded.m_nCode >= kLeadByte) {
            return std::nullopt;
        }
        tables.m_aSingles[byte] =
            decoded.m_eKind == DecodedSequence::kCharacter ? static_cast<std::uint16_t>(decoded.m_nCode) : kNoCharacter;
        if (decoded.m_eKind == DecodedSequence::kIncomplete) {
            tables.m_aSingles[byte] = kLeadByte;
            leads.push_back(byte);
        }
    }
    return leads;
}

bool isAscii(const MultiByteTables& tables) noexcept
{
    for (std::uint32_t code = 0; code < 0x80; ++code) {
        const bool isEncoded = tables.m_tBytes[code] == code && (code > 0 || tables.m_bNull);
        if (!isEncoded || tables.m_aSingles[code] != code) {
            return false;
        }
    }
    return true;
}

std::uint32_t leastTrail(const SetMapping& mapping, const std::vector<std::uint32_t>& leads)
{
    for (std::uint32_t trail = 0; trail < 0x100; ++trail) {
        for (const std::uint32_t lead : leads) {
            if (mapping.decode({lead << 8 | trail, 2}).m_eKind == DecodedSequence::kCharacter) {
                return trail;
            }
        }
    }
    return 0x100;
}

}  // namespace vel::transcoding_details
