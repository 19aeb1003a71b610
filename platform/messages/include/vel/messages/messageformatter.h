#pragma once

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/message.h"
#include "vel/core/string.h"
#include "vel/core/stringbuffer.h"
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
    /// The same, appended to `out`, whose capacity saves allocating.
    void format(const Message& message, StringBufferBase& out) const;

private:
    void fill(const Message& pattern, const Message& message, StringBufferBase& out) const;
    void describeKey(const Message& message, StringBufferBase& out) const;

    Handle<const MessageTable> m_hTable;
};

}  // namespace vel
