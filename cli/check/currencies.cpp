#include "check/currencies.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "check/currencyattributes.h"
#include "check/isodigits.h"
#include "text.h"

namespace cli {

namespace {

using vel::String;
using vel::XmlElement;

/// The places of texts that must not stand twice.
using Seen = std::map<std::wstring_view, const XmlElement*>;

class CurrenciesCheck
{
public:
    CurrenciesCheck(const XmlElement& root, Knowledge& knowledge, Findings& findings)
        : m_tRoot(root), m_tKnowledge(knowledge), m_tFindings(findings)
    {}

    void run();

private:
    void checkOne(const XmlElement& currency);
    bool checkHead(const XmlElement& currency);
    void checkTag(const XmlElement& currency);
    void checkSymbol(const XmlElement& currency);
    void checkIsoDigits(const XmlElement& currency);
    void checkPictures(const XmlElement& currency);
    std::optional<Problem> checkNegative(const XmlElement& negative, std::wstring_view positive, Seen& seen) const;
    void checkLocale(const XmlElement& currency);
    void checkCaptions(const XmlElement& currency);
    void checkMessage(const XmlElement& currency, const wchar_t* attribute);

    const XmlElement& m_tRoot;
    Knowledge& m_tKnowledge;
    Findings& m_tFindings;
    Seen m_tTags;
};

bool isOfType(const XmlElement& currency, const wchar_t* type)
{
    return vel::compareNoCase(currency.attribute(L"type"), type) == 0;
}

bool isLocal(const XmlElement& currency)
{
    return isOfType(currency, L"local");
}

void CurrenciesCheck::run()
{
    if (m_tRoot.name() != L"Currencies") {
        m_tFindings.add(m_tRoot, {kWarning, "root-not-currencies",
                                  "the root is <" + visibleText(m_tRoot.name()) + ">, so no currency is read: put " +
                                      "them into <Currencies>"});
        return;
    }
    for (const XmlElement& child : vel::children(m_tRoot)) {
        if (child.name() == L"Currency") {
            checkOne(child);
            continue;
        }
        m_tFindings.add(child, {kWarning, "skipped-element",
                                "<" + visibleText(child.name()) + "> is skipped: here stand <Currency> elements"});
    }
}

void CurrenciesCheck::checkOne(const XmlElement& currency)
{
    checkCurrencyAttributes(currency, m_tFindings);
    if (!checkHead(currency)) {
        return;
    }
    checkTag(currency);
    checkSymbol(currency);
    checkIsoDigits(currency);
    checkPictures(currency);
    checkLocale(currency);
    checkCaptions(currency);
}

/// Whether the loader takes the currency. It says nothing of types that it does not know.
bool CurrenciesCheck::checkHead(const XmlElement& currency)
{
    const std::wstring_view type = currency.attribute(L"type");
    if (currency.attribute(L"tag").empty()) {
        m_tFindings.add(currency,
                        {kWarning, "currency-without-tag", "a currency without a tag is skipped: write its tag"});
    } else if (type.empty()) {
        m_tFindings.add(currency, {kWarning, "currency-without-type",
                                   "a currency without a type is skipped: write type local or international"});
    } else if (!isLocal(currency) && !isOfType(currency, L"international")) {
        m_tFindings.add(currency, {kWarning, "invalid-type",
                                   "type " + quotedName(type) + " is unknown, so the currency is skipped: write " +
                                       "local or international"});
    } else {
        return true;
    }
    return false;
}

/// In a file of its own a currency may replace one that was loaded before.
void CurrenciesCheck::checkTag(const XmlElement& currency)
{
    const std::wstring_view tag = currency.attribute(L"tag");
    if (const auto [before, isNew] = m_tTags.emplace(tag, &currency); !isNew) {
        m_tFindings.add(currency, {kWarning, "duplicate-tag",
                                   "currency " + quotedName(tag) + " replaces the one of the same tag in line " +
                                       std::to_string(before->second->line()) + ": keep one of them"});
    }
}

/// Many countries write "$", and the local currency of one country has often the symbol that is also the code of an
/// international one: such symbols are shared on purpose. But what one reader may meet side by side has to differ: the
/// international currencies, and those of one locale.
void CurrenciesCheck::checkSymbol(const XmlElement& currency)
{
    const String tag(currency.attribute(L"tag"));
    const String symbol(currency.attribute(L"symbol"));
    if (symbol.isEmpty()) {
        m_tFindings.add(currency, {kMinorWarning, "currency-without-symbol",
                                   "currency " + quotedName(tag) + " has no symbol, so amounts show none: write one"});
        return;
    }
    Knowledge::TagsBySymbol& tags = isLocal(currency)
                                        ? m_tKnowledge.m_tLocalSymbols[String(currency.attribute(L"locale"))]
                                        : m_tKnowledge.m_tInternationalSymbols;
    const auto [before, isNew] = tags.try_emplace(symbol, tag);
    if (isNew || before->second == tag) {
        return;
    }
    const char* whose = isLocal(currency) ? " of the same locale" : ", which is international too";
    m_tFindings.add(currency, {kWarning, "duplicate-symbol",
                               "the symbol " + quotedName(symbol) + " is also that of " + quotedName(before->second) +
                                   whose + ", and leads to the last one only: change one of them"});
}

void CurrenciesCheck::checkIsoDigits(const XmlElement& currency)
{
    const std::wstring_view tag = currency.attribute(L"tag");
    const String digits(currency.attribute(L"digits"));
    const bool isNumber = !digits.isEmpty() && digits.length() < 3 &&
                          digits.view().find_first_not_of(L"0123456789") == std::wstring_view::npos;
    if (isLocal(currency) || !isNumber) {
        return;
    }
    const std::optional<int> iso = isoDigits(tag);
    if (isWithoutIsoDigits(tag) || (iso && std::stoi(digits.view().data()) != *iso)) {
        const std::string expected = iso ? "gives " + std::to_string(*iso) : "gives none";
        m_tFindings.add(currency,
                        {kMinorWarning, "not-iso-digits",
                         "digits of " + quotedName(tag) + " are " + utf8Text(digits) + " where ISO 4217 " + expected +
                             ": " + (iso ? "write that, or" : "leave them out, or") + " make it a local currency"});
    }
}

void CurrenciesCheck::checkPictures(const XmlElement& currency)
{
    std::wstring_view format = currency.attribute(L"format");
    if (format.empty()) {
        format = isLocal(currency) ? L"$#" : L"# $";
    } else if (auto problem = checkPicture("format", format)) {
        m_tFindings.add(currency, std::move(*problem));
    }
    Seen seen;
    for (const XmlElement& negative : vel::children(currency)) {
        if (auto problem = checkNegative(negative, format, seen)) {
            m_tFindings.add(negative, std::move(*problem));
        }
    }
}

std::optional<Problem> CurrenciesCheck::checkNegative(const XmlElement& negative, std::wstring_view positive,
                                                      Seen& seen) const
{
    const std::wstring_view tag = negative.attribute(L"tag");
    const std::wstring_view format = negative.attribute(L"format");
    if (negative.name() != L"negative") {
        return Problem{kWarning, "skipped-element",
                       "<" + visibleText(negative.name()) + "> is skipped: a currency holds <negative> elements"};
    }
    if (tag.empty()) {
        return Problem{kWarning, "negative-without-tag",
                       "a negative format without a tag is skipped: name it, such as minus"};
    }
    if (format.empty()) {
        return Problem{kWarning, "negative-without-format",
                       "the negative format " + quotedName(tag) + " has no picture and is skipped: write its format"};
    }
    if (const auto [before, isNew] = seen.emplace(tag, &negative); !isNew) {
        return Problem{kWarning, "duplicate-negative",
                       "the negative format " + quotedName(tag) + " replaces the one in line " +
                           std::to_string(before->second->line()) + ": keep one of them"};
    }
    if (format == positive) {
        return Problem{kWarning, "negative-as-positive",
                       "the negative format " + quotedName(tag) + " is " + quotedName(format) +
                           " like that of positive amounts, so they cannot be told apart: add a sign or brackets"};
    }
    return checkPicture("the negative format " + quotedName(tag), format);
}

void CurrenciesCheck::checkLocale(const XmlElement& currency)
{
    const std::wstring_view locale = currency.attribute(L"locale");
    if (!isLocal(currency)) {
        if (!locale.empty()) {
            m_tFindings.add(currency, {kMinorWarning, "ignored-attribute",
                                       "locale " + quotedName(locale) + " is of no effect, as the currency is " +
                                           "international: leave it out or make it local"});
        }
    } else if (locale.empty()) {
        if (currency.attribute(L"displayMessage").empty() && currency.attribute(L"displaymessage").empty()) {
            m_tFindings.add(currency, {kMinorWarning, "local-without-locale",
                                       "a local currency without locale and displayMessage is shown by its symbol " +
                                           std::string("alone: name its locale")});
        }
    } else if (m_tKnowledge.knowsDefinitions() && !m_tKnowledge.isDefined(locale)) {
        m_tFindings.add(currency, {kWarning, "unknown-definition",
                                   "there is no definition " + quotedName(locale) + ", so the currency is shown by " +
                                       "its symbol alone: correct the name or add it"});
    }
}

void CurrenciesCheck::checkCaptions(const XmlElement& currency)
{
    const bool hasMessage = !currency.attribute(L"displayMessage").empty();
    if (hasMessage && currency.hasAttribute(L"displaymessage")) {
        m_tFindings.add(currency, {kMinorWarning, "ignored-attribute",
                                   "displaymessage is of no effect beside displayMessage: leave it out"});
    }
    checkMessage(currency, hasMessage ? L"displayMessage" : L"displaymessage");
    checkMessage(currency, L"displayName");
}

void CurrenciesCheck::checkMessage(const XmlElement& currency, const wchar_t* attribute)
{
    const String key(currency.attribute(attribute));
    const auto& keys = m_tKnowledge.m_tMessageKeys;
    if (key.isEmpty() || !keys || keys->contains(key)) {
        return;
    }
    m_tFindings.add(currency, {kMinorWarning, "display-message-missing",
                               "no language has the message " + quotedName(key) + " of " + utf8Text(attribute) +
                                   ", so something plainer is shown: add the message"});
}

}  // namespace

void checkCurrencies(const XmlElement& root, Knowledge& knowledge, Findings& findings)
{
    CurrenciesCheck(root, knowledge, findings).run();
}

}  // namespace cli
