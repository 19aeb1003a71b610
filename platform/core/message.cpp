#include "vel/core/message.h"

#include <algorithm>

#include "vel/core/texthash.h"

namespace vel {

namespace message_details {

namespace {

constexpr std::wstring_view kParamStart = L"<velm:param insert=\"";
constexpr std::wstring_view kParamEnd = L"\"/>";
constexpr std::size_t kMaxInsertDigits = 4;

/// The number at the front of `text`; `length` receives its digits, 0 when there is none.
unsigned readInsertNumber(std::wstring_view text, std::size_t& length)
{
    unsigned number = 0;
    length = 0;
    while (length < text.size() && length < kMaxInsertDigits && text[length] >= L'0' && text[length] <= L'9') {
        number = number * 10 + static_cast<unsigned>(text[length] - L'0');
        ++length;
    }
    return number;
}

/// Splits a pattern into its pieces.
class PatternReader
{
public:
    explicit PatternReader(std::wstring_view pattern) : m_sPattern(pattern) {}

    std::vector<Piece> read()
    {
        for (std::size_t at = nextSpecial(0); at < m_sPattern.size(); at = nextSpecial(at)) {
            at += m_sPattern[at] == L'%' ? readPercent(at) : readElement(at);
        }
        if (!m_vPieces.empty()) {
            endPlain(m_sPattern.size());
        }
        return std::move(m_vPieces);
    }

private:
    std::size_t nextSpecial(std::size_t from) const
    {
        return std::min(m_sPattern.find_first_of(L"%<", from), m_sPattern.size());
    }

    /// The length of what stands at `at`.
    std::size_t readPercent(std::size_t at)
    {
        if (at + 1 < m_sPattern.size() && m_sPattern[at + 1] == L'%') {
            endPlain(at + 1);  // the first of the two is shown
            m_nPlainStart = at + 2;
            return 2;
        }
        std::size_t digits = 0;
        const unsigned number = readInsertNumber(m_sPattern.substr(at + 1), digits);
        return digits == 0 ? 1 : addInsert(at, 1 + digits, number);
    }

    std::size_t readElement(std::size_t at)
    {
        const std::wstring_view rest = m_sPattern.substr(at);
        if (!rest.starts_with(kParamStart)) {
            return 1;
        }
        std::size_t digits = 0;
        const unsigned number = readInsertNumber(rest.substr(kParamStart.size()), digits);
        const std::size_t end = kParamStart.size() + digits;
        return digits > 0 && rest.substr(end).starts_with(kParamEnd) ? addInsert(at, end + kParamEnd.size(), number)
                                                                     : 1;
    }

    std::size_t addInsert(std::size_t at, std::size_t length, unsigned number)
    {
        endPlain(at);
        m_vPieces.push_back({at, length, number});
        m_nPlainStart = at + length;
        return length;
    }

    void endPlain(std::size_t end)
    {
        if (end > m_nPlainStart) {
            m_vPieces.push_back({m_nPlainStart, end - m_nPlainStart, Piece::kPlain});
        }
    }

    std::wstring_view m_sPattern;
    std::size_t m_nPlainStart = 0;
    std::vector<Piece> m_vPieces;
};

}  // namespace

Node::~Node() = default;

std::wstring_view Node::plainTextOf(const Message& value) noexcept
{
    return value.plainText();
}

namespace {

/// The pieces of a pattern as they stand in it: inserts as they are written, of "%%" one sign.
String filledWithNothing(std::wstring_view pattern, const std::vector<Piece>& pieces)
{
    String filled;
    for (const Piece& each : pieces) {
        filled.append(pattern.substr(each.m_nStart, each.m_nLength));
    }
    return filled;
}

}  // namespace

Root::Root(String keyOrText, RootKind kind)
    : Node(*this),
      m_sKeyOrText(std::move(keyOrText)),
      m_nHash(hashText(m_sKeyOrText.view())),
      m_eKind(kind),
      m_vPieces(kind == kExternalKey ? std::vector<Piece>() : PatternReader(m_sKeyOrText.view()).read()),
      m_sFilled(kind == kPattern ? filledWithNothing(m_sKeyOrText.view(), m_vPieces) : String())
{}

Root::~Root() = default;

}  // namespace message_details

using message_details::Node;
using message_details::Root;

Message Message::text(String text)
{
    return Message(makeHandle<const Root>(std::move(text), message_details::kLiteralText));
}

Message Message::pattern(String pattern)
{
    const bool isShownAsItIs = pattern.view().find(L"%%") == std::wstring_view::npos;
    return isShownAsItIs ? text(std::move(pattern))
                         : Message(makeHandle<const Root>(std::move(pattern), message_details::kPattern));
}

Message Message::external(String key)
{
    return Message(makeHandle<const Root>(std::move(key), message_details::kExternalKey));
}

Message& Message::insert(unsigned number, Message value) &
{
    if (findInsert(number) != nullptr) {
        replaceInsert(number, std::move(value));
    } else {
        // Nothing is moved from before the memory is there.
        m_hNode = makeHandle<const Node>(std::move(m_hNode), number, std::move(value));
    }
    return *this;
}

/// Builds the message anew, because others may share what it is made of.
void Message::replaceInsert(unsigned number, Message value)
{
    Message changed((Handle<const Node>(&root())));
    for (Insert& each : inserts()) {
        Message& kept = each.m_nNumber == number ? value : each.m_tValue;
        changed.m_hNode = makeHandle<const Node>(changed.m_hNode, each.m_nNumber, std::move(kept));
    }
    *this = std::move(changed);
}

Message&& Message::insert(unsigned number, Message value) &&
{
    return std::move(insert(number, std::move(value)));
}

Message& Message::insert(unsigned number, const String& value) &
{
    return insert(number, text(value));
}

Message&& Message::insert(unsigned number, const String& value) &&
{
    return std::move(insert(number, text(value)));
}

std::vector<Message::Insert> Message::inserts() const
{
    std::vector<Insert> found;
    for (const Node* node = m_hNode.get(); node != &root(); node = node->m_hNext.get()) {
        found.push_back({node->m_nNumber, node->m_tValue});
    }
    std::reverse(found.begin(), found.end());
    return found;
}

String Message::toString() const
{
    if (isPlainText()) {
        return String(plainText());
    }
    String out;
    if (isExternal()) {
        out = keyOrText();
        const wchar_t* separator = L"(";
        for (const Insert& each : inserts()) {
            out.append(separator).append(each.m_tValue.toString().view());
            separator = L", ";
        }
        return m_hNode.get() == &root() ? out : out.append(L')');
    }
    fillPattern(
        *this, [&](std::wstring_view text) { out.append(text); },
        [&](const Message& insert) { out.append(insert.toString().view()); });
    return out;
}

bool operator==(const Message& a, const Message& b) noexcept
{
    if (a.root().m_eKind != b.root().m_eKind || a.keyOrText() != b.keyOrText()) {
        return false;
    }
    const Node* x = a.m_hNode.get();
    const Node* y = b.m_hNode.get();
    for (; x != &a.root() && y != &b.root(); x = x->m_hNext.get(), y = y->m_hNext.get()) {
        if (x->m_nNumber != y->m_nNumber || !(x->m_tValue == y->m_tValue)) {
            return false;
        }
    }
    return x == &a.root() && y == &b.root();
}

}  // namespace vel
