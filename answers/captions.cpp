#include "answers/captions.h"

#include <utility>

#include "vel/messages/messageformatter.h"

namespace answers {

Captions::Captions(Table wanted, Table english) : m_hWanted(std::move(wanted)), m_hEnglish(std::move(english))
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

}  // namespace answers
