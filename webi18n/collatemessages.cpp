#include "webi18n/collatemessages.h"

#include <cwchar>

namespace vel {

namespace {

void render(const GDValue& value, const MessageFormatter& formatter, StringBufferBase& out)
{
    out.clear();
    if (const Message* message = value.asMessage()) {
        formatter.format(*message, out);
    } else {
        out.append(value.asText()->view());
    }
    out.append(L'\0');
}

}  // namespace

CollateMessagesLess::CollateMessagesLess(MessageFormatter& rFormatter) noexcept : m_rFormatter(rFormatter)
{}

CollateMessagesLess::CollateMessagesLess(const CollateMessagesLess& other) noexcept : m_rFormatter(other.m_rFormatter)
{}

bool CollateMessagesLess::operator()(const GDValue& rLeft, const GDValue& rRight)
{
    render(rLeft, m_rFormatter, m_tLeft);
    render(rRight, m_rFormatter, m_tRight);
    return std::wcscmp(m_tLeft.data(), m_tRight.data()) < 0;
}

}  // namespace vel
