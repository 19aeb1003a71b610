#pragma once

#include "vel/core/api.h"
#include "vel/core/stringbuffer.h"
#include "vel/messages/gdvariant.h"
#include "vel/messages/messageformatter.h"

namespace vel {

/// An ordering of values that are messages or texts: by the text that the formatter renders, character by character as
/// code points and up to a zero. Despite its name no linguistic order takes part: "B" stands before "a" in every
/// locale.
///
/// It reuses its two buffers, so that texts of up to 511 characters need no allocation: one thread at a time. A copy
/// has buffers of its own; the formatter must outlive both.
class WEBI18N_API CollateMessagesLess
{
public:
    explicit CollateMessagesLess(MessageFormatter& rFormatter) noexcept;
    CollateMessagesLess(const CollateMessagesLess& other) noexcept;
    CollateMessagesLess& operator=(const CollateMessagesLess&) = delete;
    ~CollateMessagesLess() = default;

    /// Whether the left value's text is smaller.
    bool operator()(const GDValue& rLeft, const GDValue& rRight);

private:
    MessageFormatter& m_rFormatter;
    StringBuffer<512> m_tLeft;
    StringBuffer<512> m_tRight;
};

}  // namespace vel
