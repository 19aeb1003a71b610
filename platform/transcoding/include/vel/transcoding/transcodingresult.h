#pragma once

#include <cstddef>

namespace vel {

/// What becomes of a character that the character set cannot express.
///
/// A character is ill-formed when it is no Unicode scalar value: a surrogate (U+D800 to U+DFFF), negative, or above
/// U+10FFFF. It is unencodable when it is a scalar value for which the set has no bytes. Noncharacters such as U+FFFF
/// are scalar values like others. Neither kind is ever written as it is:
///
///     policy                 | unencodable                  | ill-formed
///     kUnencodableReference  | decimal reference, "&#8364;" | U+FFFD where the set has it, else the set's substitute
///     kUnencodableSubstitute | the set's substitute         | U+FFFD where the set has it, else the set's substitute
///     kUnencodableError      | stops before the character   | stops before the character
///
/// The substitute is the one that the set's definition names: a question mark in many, the control character SUBSTITUTE
/// (0x1A) in others, a double-byte sign in some double-byte sets. Sets that express every scalar value (UTF-8, UTF-16,
/// UTF-32, GB18030) have nothing unencodable and write U+FFFD for what is ill-formed. The characters of a reference are
/// written in the set itself (in an EBCDIC set they are not ASCII); a set without them takes its substitute instead.
enum EUnencodable
{
    kUnencodableReference = 0,   ///< decimal character reference, as a browser submits a form
    kUnencodableSubstitute = 1,  ///< the set's substitute
    kUnencodableError = 2,       ///< stop; the result has the place
    kUnencodableEnd_ = 3
};

/// How a piece of transcoding ended.
enum ETranscodingStatus
{
    kTranscodingComplete = 0,     ///< all of the input is encoded
    kTranscodingOutputFull = 1,   ///< there is more to write than there was room
    kTranscodingUnencodable = 2,  ///< the policy is kUnencodableError, and the character at m_nRead is at fault
    kTranscodingStatusEnd_ = 3
};

/// How far a piece of transcoding came.
struct TranscodingResult
{
    std::size_t m_nRead = 0;     ///< characters done with; the index of the next one, which may be the one at fault
    std::size_t m_nWritten = 0;  ///< bytes written; they encode what is before `m_nRead`
    ETranscodingStatus m_eStatus = kTranscodingComplete;

    bool isComplete() const noexcept { return m_eStatus == kTranscodingComplete; }
};

}  // namespace vel
