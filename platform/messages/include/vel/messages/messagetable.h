#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/core/textnumbers.h"
#include "vel/messages/gdvariant.h"

namespace vel {

class XmlDocument;

/// The messages of one language by key. Filled by one thread, then shared by Handle and only read, from any thread.
///
/// A message file:
///
///     <messages xmlns="com.quellin.messages/v1" xmlns:velm="com.quellin.messages/v1" language="en">
///       <message key="kmsgLocaleName_enUS">English (United States)</message>
///       <message key="kmsgHeading"><velm:param insert="1"/> (<velm:param insert="2"/>)</message>
///       <message key="kmsgAlias"><velm:ref key="kmsgLocaleName_enUS"/></message>
///     </messages>
///
/// White space is kept. An insert stands in the text as "%1" or as <velm:param insert="1"/>, whatever its prefix; "%%"
/// is a per-cent sign, and so is a "%" that no digit follows. Other elements leave their text only. There is no way to
/// show the characters of an insert: character data that spells one is one. A message that holds one velm:ref and
/// otherwise at most white space is a reference to that message.
class WEBI18N_API MessageTable : public RefCounted
{
public:
    /// An empty table for a language tag such as "en".
    explicit MessageTable(String language);
    ~MessageTable() override;

    const String& language() const noexcept { return m_sLanguage; }
    std::size_t size() const noexcept { return m_vMessages.size(); }

    /// Adds a file's messages; a key that is already there is replaced, a message without a key is skipped. Throws
    /// XmlException; then the table is unchanged.
    void load(const FilePath& file);
    /// The same from a loaded document, which need not outlive the call.
    void load(const XmlDocument& document);
    /// Sets one message's text, a pattern as in a file. Where the table has references, this and setReference follow
    /// them all anew: a file is the way to many.
    void set(const String& key, const String& text);
    /// Makes `key` a reference to another message, which may come later.
    void setReference(const String& key, const String& target);

    /// The text message of `key`, a pattern as in the file, references followed; undefined when there is none, or when
    /// references form a circle. References are followed when the table is filled: a chain of them costs a look-up
    /// nothing.
    GDVariant lookUp(std::wstring_view key) const;
    /// The message that lookUp(key) holds, or null. Valid until the table changes.
    const Message* find(std::wstring_view key) const noexcept;
    /// The same for the key of an external message.
    const Message* find(const Message& external) const noexcept;
    /// Resolves a value: an external message becomes the text message of its key in this table, with its inserts
    /// resolved likewise, or undefined when there is none; every other value is returned as it is. An insert that has
    /// no message here stays external.
    GDVariant resolveReferences(const GDVariant& value) const;

    /// Names what the table holds: another number after every change, which no other table of the process has had.
    std::uint64_t version() const noexcept { return m_nVersion; }

private:
    /// A message as it was given, and where its references lead.
    struct Entry
    {
        Message m_tMessage;         // a text, or as an external one the reference to another
        std::uint32_t m_nFollowed;  // the number of the text; TextNumbers::kNone when there is none
    };

    void put(std::wstring_view key, Message message);
    void followReferences() noexcept;
    std::uint32_t endOfReferences(std::uint32_t number) noexcept;
    std::uint32_t replaceAlong(std::uint32_t number, std::uint32_t from, std::uint32_t to) noexcept;
    std::uint32_t numberOf(const Message& external) const noexcept;
    const Message* textOf(std::uint32_t number) const noexcept;

    TextNumbers m_tKeys;
    std::vector<Entry> m_vMessages;  // by the number of its key
    std::size_t m_nReferences = 0;   // how many of them are
    String m_sLanguage;
    std::uint64_t m_nVersion;
};

}  // namespace vel
