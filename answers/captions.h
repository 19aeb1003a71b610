#pragma once

#include "vel/core/handle.h"
#include "vel/messages/gdvariant.h"
#include "vel/messages/messagetable.h"

namespace answers {

/// The messages of a language, and behind them the English ones.
class Captions
{
public:
    using Table = vel::Handle<const vel::MessageTable>;

    /// The language's messages, and the English ones.
    Captions(Table wanted, Table english);

    /// Whether one of both has the message.
    bool has(const vel::String& key) const;
    /// The language's messages when they have the key, else the English ones.
    const Table& tableFor(const vel::String& key) const;
    /// The value as people read it in the language of the table.
    static vel::String format(const vel::GDVariant& value, const Table& table);

private:
    Table m_hWanted;
    Table m_hEnglish;
};

}  // namespace answers
