#pragma once

#include <string>
#include <utility>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/string.h"

namespace vel {

/// A message for people: a key into the message files (external) or a literal text, each with numbered inserts.
///
/// In a text that has inserts, "%1" and "<velm:param insert="1"/>" stand for insert 1, "%%" for a per-cent sign;
/// inserts are numbered from 1. A text without inserts is shown as it is, so that a file's name or a user's text can be
/// one. An immutable value once built; reading it is safe from any thread.
class WEBI18N_API Message
{
public:
    struct Insert;

    /// A literal text.
    static Message text(String text);
    /// The message of `key` in whatever language it is rendered.
    static Message external(String key);

    // Defined beside Insert, which holds a Message itself.
    Message(const Message&);
    Message(Message&&) noexcept;
    Message& operator=(const Message&);
    Message& operator=(Message&&) noexcept;
    ~Message();

    /// Sets insert `number`, replacing an earlier one of that number.
    Message& insert(unsigned number, Message value) &;
    Message&& insert(unsigned number, Message value) &&;
    /// The same with a literal text.
    Message& insert(unsigned number, const String& value) &;
    Message&& insert(unsigned number, const String& value) &&;

    bool isExternal() const noexcept { return m_bExternal; }
    /// Whether it is a literal text without inserts, shown as it is.
    bool isPlainText() const noexcept { return !m_bExternal && m_tInserts.empty(); }
    /// The key of an external message, the text of a text message.
    const String& keyOrText() const noexcept { return m_sKeyOrText; }
    const std::vector<Insert>& inserts() const noexcept { return m_tInserts; }
    /// The insert of that number, or null.
    const Message* findInsert(unsigned number) const noexcept;

    /// The text with its inserts filled in, without message files: an external message, which has no text here, reads
    /// as its key with its inserts in brackets. An insert that is not set stays as it is written.
    ///
    ///     text "Loading '%1'.", 1 = "a.xml"   -> Loading 'a.xml'.
    ///     text "50%% of %2", 1 = "a"          -> 50% of %2
    ///     text "50%% of %2"                   -> 50%% of %2
    ///     external "kmsgInvalidLocaleTag", 1 = "xx" -> kmsgInvalidLocaleTag(xx)
    String toString() const;

    friend bool operator==(const Message& a, const Message& b) noexcept;

private:
    Message(String keyOrText, bool external);

    String m_sKeyOrText;
    std::vector<Insert> m_tInserts;
    bool m_bExternal;
};

struct Message::Insert
{
    unsigned m_nNumber;
    Message m_tValue;
};

/// Replaces the inserts in `pattern` ("%1", "<velm:param insert="1"/>", "%%") by what `lookUp(number)` gives: a pointer
/// to a String, or null to leave the place as it is written. Digits after "%" are read greedily, at most four. Appends
/// to `out`.
template <typename LookUp>
void fillInserts(std::wstring_view pattern, LookUp lookUp, std::wstring& out);

namespace message_details {

/// What stands at the front of the pattern: an insert (number, length), an escaped per-cent sign, or plain text.
struct PatternToken
{
    enum Kind
    {
        kPlain,
        kPercent,
        kInsert
    };
    Kind m_eKind;
    unsigned m_nInsert;
    std::size_t m_nLength;
};

WEBI18N_API PatternToken nextToken(std::wstring_view pattern) noexcept;

}  // namespace message_details

template <typename LookUp>
void fillInserts(std::wstring_view pattern, LookUp lookUp, std::wstring& out)
{
    while (!pattern.empty()) {
        const message_details::PatternToken token = message_details::nextToken(pattern);
        const std::wstring_view written = pattern.substr(0, token.m_nLength);
        pattern.remove_prefix(token.m_nLength);
        if (token.m_eKind == message_details::PatternToken::kPercent) {
            out.push_back(L'%');
            continue;
        }
        const String* value =
            token.m_eKind == message_details::PatternToken::kInsert ? lookUp(token.m_nInsert) : nullptr;
        out.append(value == nullptr ? written : value->view());
    }
}

}  // namespace vel
