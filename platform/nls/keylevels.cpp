#include "keylevels.h"

namespace vel::nls {

namespace {

constexpr std::size_t kLowSpan = 252;  ///< 03..FE behind 01; FF goes on

// Bytes of the fourth level.
constexpr unsigned char kVariable = 0x03;
constexpr unsigned char kRunLow = 0x04;   ///< a run of one before a lower weight or the end
constexpr unsigned char kRunHigh = 0xFB;  ///< a run of one before a higher weight
constexpr std::size_t kQuaternarySpan = 124;
constexpr unsigned char kQuaternaryBase = 0xFB;  ///< the weights are FC, FD and FE

}  // namespace

KeyLevels::KeyLevels(const SortData& data, SortStrength strength)
    : m_nLevels(static_cast<unsigned>(strength) + 1),
      m_bFrench(data.m_tRules.isFrench()),
      m_bShifted(m_nLevels >= 4 && data.m_tRules.isShifted()),
      m_bQuaternary(m_nLevels >= 4 && data.m_pUnshifted != nullptr)
{}

void KeyLevels::putLongRun(KeyBytes& bytes, std::size_t run, unsigned top, bool isHigher)
{
    const std::size_t span = top - 2;
    if (run > 2 * span) {
        // More than the bytes of a usual event: what was promised to the events to come stays.
        bytes.reserve(run / span + kEventBytes + m_nReserved);
    }
    if (!isHigher) {
        bytes.put(0x01);
        for (; run >= kLowSpan; run -= kLowSpan) {
            bytes.put(0xFF);
        }
        bytes.put(static_cast<unsigned char>(0x03 + run));
        return;
    }
    for (; run > span; run -= span) {
        bytes.put(0x03);
    }
    if (run != 0) {
        bytes.put(static_cast<unsigned char>(top + 1 - run));
    }
}

void KeyLevels::secondary(std::size_t number, const LevelCode& code)
{
    if (m_bFrench) {
        m_tSecondary.reserve(sizeof(FrenchEvent));
        pushFrench({number - m_nSkipped, code});
        return;
    }
    m_tSecondary.reserve(2 * kEventBytes + code.m_nLength);
    secondary(number, code.m_aBytes[0]);
    m_tSecondary.reserve(code.m_nLength);
    m_tSecondary.put(&code.m_aBytes[1], code.m_nLength - 1U);
}

void KeyLevels::tertiary(std::size_t number, const LevelCode& code)
{
    m_tTertiary.reserve(2 * kEventBytes + code.m_nLength);
    tertiary(number, code.m_aBytes[0]);
    m_tTertiary.reserve(code.m_nLength);
    m_tTertiary.put(&code.m_aBytes[1], code.m_nLength - 1U);
}

// ----------------------------------------------------------------------------------------------------------- backwards

void KeyLevels::pushFrench(const FrenchEvent& event)
{
    m_tSecondary.put(reinterpret_cast<const unsigned char*>(&event), sizeof event);
}

void KeyLevels::mergeSeparator(std::size_t number)
{
    m_tSecondary.reserve(sizeof(FrenchEvent));
    pushFrench({number - m_nSkipped, {}});
}

/// Writes each part between separators from its end, and 02 behind all but the last.
void KeyLevels::finishFrench(std::size_t elements)
{
    const std::size_t count = m_tSecondary.size() / sizeof(FrenchEvent);
    const auto at = [&](std::size_t i) {
        FrenchEvent event;
        std::memcpy(&event, m_tSecondary.data() + i * sizeof event, sizeof event);
        return event;
    };
    for (std::size_t begin = 0; begin <= count;) {
        std::size_t end = begin;
        while (end < count && at(end).m_tCode.m_nLength != 0) {
            ++end;
        }
        std::size_t next = end < count ? at(end).m_nNumber : elements - m_nSkipped;
        for (std::size_t i = end; i-- > begin;) {
            const FrenchEvent event = at(i);
            const std::size_t run = next - event.m_nNumber - 1;
            next = event.m_nNumber;
            m_tBackwards.reserve(2 * kEventBytes + event.m_tCode.m_nLength);
            putEvent<kSecondaryTop>(m_tBackwards, run, event.m_tCode.m_aBytes[0]);
            m_tBackwards.reserve(event.m_tCode.m_nLength);
            m_tBackwards.put(&event.m_tCode.m_aBytes[1], event.m_tCode.m_nLength - 1U);
        }
        if (end < count) {
            m_tBackwards.reserve(1);
            m_tBackwards.put(0x02);
        }
        begin = end + 1;
    }
}

// -------------------------------------------------------------------------------------------------------- fourth level

void KeyLevels::putQuaternaryRun(std::size_t run, bool isHigher)
{
    m_tQuaternary.reserve(run / kQuaternarySpan + 1);
    for (; run > kQuaternarySpan; run -= kQuaternarySpan) {
        m_tQuaternary.put(isHigher ? 0x80 : 0x7F);
    }
    if (run != 0) {
        m_tQuaternary.put(static_cast<unsigned char>(isHigher ? kRunHigh + 1 - run : kRunLow - 1 + run));
    }
}

void KeyLevels::quaternary(std::size_t number, unsigned weight)
{
    putQuaternaryRun(number - m_nQuaternaryNext, true);
    m_nQuaternaryNext = number + 1;
    m_tQuaternary.reserve(1);
    m_tQuaternary.put(static_cast<unsigned char>(kQuaternaryBase + weight));
}

void KeyLevels::variable(std::size_t number, const PrimaryCode& primary)
{
    putQuaternaryRun(number - m_nQuaternaryNext, false);
    m_nQuaternaryNext = number;
    m_tQuaternary.reserve(1U + primary.m_nLength);
    m_tQuaternary.put(kVariable);
    m_tQuaternary.put(primary.m_aBytes.data(), primary.m_nLength);
}

void KeyLevels::finish(std::size_t elements)
{
    if (m_bFrench && hasSecondary()) {
        finishFrench(elements);
    }
    // Where nothing is shifted nothing is lower than the common weight, and a run at the end says nothing.
    if (m_bShifted) {
        putQuaternaryRun(elements - m_nQuaternaryNext, false);
    }
}

}  // namespace vel::nls
