#include "captions.h"

#include "vel/messages/messageformatter.h"

namespace cli {

namespace {

constexpr const wchar_t* ksEnglish = L"en";

}  // namespace

Captions::Captions(Session& session, const vel::String& language)
    : m_hWanted(session.messages(language)), m_hEnglish(language == ksEnglish ? m_hWanted : session.messages(ksEnglish))
{}

bool Captions::has(const vel::String& key) const
{
    return !tableFor(key)->lookUp(key).isUndefinedOrNull();
}

const Captions::Table& Captions::tableFor(const vel::String& key) const
{
    return m_hWanted->lookUp(key).isUndefinedOrNull() ? m_hEnglish : m_hWanted;
}

vel::String Captions::format(const vel::GDVariant& value, const Table& table)
{
    const vel::Message* text = value.asMessage();
    return text == nullptr ? value.toString() : vel::MessageFormatter(table).format(*text);
}

}  // namespace cli
