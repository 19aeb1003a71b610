#pragma once

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/message.h"
#include "vel/core/string.h"
#include "vel/messages/messagetable.h"

namespace vel {

/// Renders messages in the language of a table. Stateless but for the table; safe from any thread.
class WEBI18N_API MessageFormatter
{
public:
    /// `table` may be null: then external messages read as their key with their inserts in brackets.
    explicit MessageFormatter(Handle<const MessageTable> table);

    /// The text with its inserts filled in, each rendered the same way. An insert that the message does not set stays
    /// as it is written; an insert that the text does not name is dropped; one that it names twice is filled in twice.
    ///
    ///     text "<velm:param insert="1"/> (%2)", 1 = "EUR", 2 = "German" -> EUR (German)
    ///     external key that the table lacks, 1 = "xx"                   -> key(xx)
    String format(const Message& message) const;

private:
    String fill(const String& pattern, const Message& message) const;
    String describeKey(const Message& message) const;

    Handle<const MessageTable> m_hTable;
};

}  // namespace vel
