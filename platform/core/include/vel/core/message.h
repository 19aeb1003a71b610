#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/refcounted.h"
#include "vel/core/string.h"

namespace vel {

namespace message_details {

class Node;
class Root;

}  // namespace message_details

/// A message for people: a key into the message files (external) or a literal text, each with numbered inserts.
///
/// In a text that has inserts, and in a pattern always, "%1" and "<velm:param insert="1"/>" stand for insert 1, "%%"
/// for a per-cent sign; inserts are numbered from 1. Digits after "%" are read greedily, at most four. A text without
/// inserts is shown as it is, so that a file's name or a user's text can be one.
///
/// A value that is cheap to copy: copies share what was built, and a further insert is put in front of what is shared.
/// Reading it is safe from any thread. A moved-from one can only be assigned to or destroyed.
class WEBI18N_API Message
{
public:
    struct Insert;

    /// A literal text.
    static Message text(String text);
    /// A text as message files have it: "%%" is a per-cent sign in it without inserts too. One without "%%" equals the
    /// literal text.
    static Message pattern(String pattern);
    /// The message of `key` in whatever language it is rendered.
    static Message external(String key);

    // Defined beside Node, which holds a Message itself.
    Message(const Message&) noexcept;
    Message(Message&&) noexcept;
    Message& operator=(const Message&) noexcept;
    Message& operator=(Message&&) noexcept;
    ~Message();

    /// Sets insert `number`, replacing an earlier one of that number.
    Message& insert(unsigned number, Message value) &;
    Message&& insert(unsigned number, Message value) &&;
    /// The same with a literal text.
    Message& insert(unsigned number, const String& value) &;
    Message&& insert(unsigned number, const String& value) &&;

    bool isExternal() const noexcept;
    /// Whether it is a text without inserts: plainText() is all that it shows.
    bool isPlainText() const noexcept;
    /// What a message shows that isPlainText(); empty for others. Valid while this message keeps its value.
    std::wstring_view plainText() const noexcept;
    /// The key of an external message, the text of a text message, a pattern as it is written.
    const String& keyOrText() const noexcept;
    /// hashText of keyOrText(), computed when the message was built.
    std::uint32_t hash() const noexcept;
    /// Its inserts in the order in which their numbers were first set.
    std::vector<Insert> inserts() const;
    /// The insert of that number, or null. Valid while this message keeps its value.
    const Message* findInsert(unsigned number) const noexcept;

    /// The text with its inserts filled in, without message files: an external message, which has no text here, reads
    /// as its key with its inserts in brackets. An insert that is not set stays as it is written.
    ///
    ///     text "Loading '%1'.", 1 = "a.xml"   -> Loading 'a.xml'.
    ///     text "50%% of %2", 1 = "a"          -> 50% of %2
    ///     text "50%% of %2"                   -> 50%% of %2
    ///     pattern "50%% of %2"                -> 50% of %2
    ///     external "kmsgInvalidLocaleTag", 1 = "xx" -> kmsgInvalidLocaleTag(xx)
    String toString() const;

    friend bool operator==(const Message& a, const Message& b) noexcept;

    /// Fills the inserts of `values` into this message's text as a pattern, whether or not the message has inserts:
    /// calls `appendText(view)` for each run of characters, among them the inserts that are plain texts, and
    /// `appendMessage(message)` for each other insert. What `values` lacks stays as it is written.
    template <typename AppendText, typename AppendMessage>
    void fillPattern(const Message& values, AppendText appendText, AppendMessage appendMessage) const;

private:
    friend class message_details::Node;

    explicit Message(Handle<const message_details::Node> node) noexcept;

    const message_details::Root& root() const noexcept;
    const message_details::Node* findNode(unsigned number) const noexcept;
    void replaceInsert(unsigned number, Message value);

    Handle<const message_details::Node> m_hNode;
};

struct Message::Insert
{
    unsigned m_nNumber;
    Message m_tValue;
};

namespace message_details {

/// A piece of a pattern: plain characters, or an insert as it is written.
struct Piece
{
    static constexpr unsigned kPlain = ~0U;

    std::size_t m_nStart;
    std::size_t m_nLength;
    unsigned m_nInsert;  // kPlain for plain characters
};

/// One insert of a message; the inserts set before it follow, the root is the last. No number comes twice.
class WEBI18N_API Node : public RefCounted
{
public:
    Node(Handle<const Node> next, unsigned number, Message value) noexcept
        : m_nNumber(number),
          m_pRoot(next.get()->m_pRoot),
          m_hNext(std::move(next)),
          m_tValue(std::move(value)),
          m_sPlainText(plainTextOf(m_tValue))
    {}
    ~Node() override;

    const unsigned m_nNumber;
    const Root* const m_pRoot;
    const Handle<const Node> m_hNext;  // null in the root
    const Message m_tValue;
    // The value's text when it is shown as it is, else null: rendering then need not look at the value itself.
    const std::wstring_view m_sPlainText;

protected:
    explicit Node(const Root& self) noexcept : m_nNumber(0), m_pRoot(&self), m_tValue(Handle<const Node>()) {}

private:
    static std::wstring_view plainTextOf(const Message& value) noexcept;
};

enum RootKind
{
    kLiteralText,
    kPattern,
    kExternalKey
};

/// What the inserts of a message belong to: its key or its text.
class WEBI18N_API Root final : public Node
{
public:
    Root(String keyOrText, RootKind kind);
    ~Root() override;

    /// What it shows without inserts, unless it is a key.
    std::wstring_view shown() const noexcept { return m_eKind == kPattern ? m_sFilled.view() : m_sKeyOrText.view(); }

    const String m_sKeyOrText;
    const std::uint32_t m_nHash;
    const RootKind m_eKind;
    const std::vector<Piece> m_vPieces;  // none for a key, and for a text that is one plain run
    const String m_sFilled;              // of a pattern, what it shows without inserts
};

}  // namespace message_details

inline Message::Message(Handle<const message_details::Node> node) noexcept : m_hNode(std::move(node))
{}
inline Message::Message(const Message&) noexcept = default;
inline Message::Message(Message&&) noexcept = default;
inline Message& Message::operator=(const Message&) noexcept = default;
inline Message& Message::operator=(Message&&) noexcept = default;
inline Message::~Message() = default;

inline const message_details::Root& Message::root() const noexcept
{
    return *m_hNode.get()->m_pRoot;
}

inline bool Message::isExternal() const noexcept
{
    return root().m_eKind == message_details::kExternalKey;
}

inline bool Message::isPlainText() const noexcept
{
    return m_hNode.get() == &root() && !isExternal();
}

inline std::wstring_view Message::plainText() const noexcept
{
    return isPlainText() ? root().shown() : std::wstring_view();
}

inline const String& Message::keyOrText() const noexcept
{
    return root().m_sKeyOrText;
}

inline std::uint32_t Message::hash() const noexcept
{
    return root().m_nHash;
}

inline const message_details::Node* Message::findNode(unsigned number) const noexcept
{
    for (const message_details::Node* node = m_hNode.get(); node != &root(); node = node->m_hNext.get()) {
        if (node->m_nNumber == number) {
            return node;
        }
    }
    return nullptr;
}

inline const Message* Message::findInsert(unsigned number) const noexcept
{
    const message_details::Node* const node = findNode(number);
    return node == nullptr ? nullptr : &node->m_tValue;
}

template <typename AppendText, typename AppendMessage>
void Message::fillPattern(const Message& values, AppendText appendText, AppendMessage appendMessage) const
{
    const std::wstring_view text = root().m_sKeyOrText.view();
    if (root().m_vPieces.empty()) {
        appendText(text);
        return;
    }
    for (const message_details::Piece& piece : root().m_vPieces) {
        const message_details::Node* const insert =
            piece.m_nInsert == message_details::Piece::kPlain ? nullptr : values.findNode(piece.m_nInsert);
        if (insert == nullptr) {
            appendText(std::wstring_view(text.data() + piece.m_nStart, piece.m_nLength));
        } else if (insert->m_sPlainText.data() != nullptr) {
            appendText(insert->m_sPlainText);
        } else {
            appendMessage(insert->m_tValue);
        }
    }
}

}  // namespace vel
