#pragma once

#include <cstdint>
#include <map>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/messages/gdvariant.h"
#include "vel/messages/messagetable.h"

namespace vel {

class LocaleTagLookup;

namespace i18n_details {
class CaptionMemory;
}  // namespace i18n_details

/// One currency as the currencies file defines it. Built and filled by CurrencyLookup, then shared by Handle and only
/// read, from any thread; clone() gives a private copy to change.
///
/// Pictures: "$" marks the symbol, "#" the number. "$#" -> €5    "# $" -> 5 EUR    "(# $)" -> (5 EUR)
class WEBI18N_API Currency : public RefCounted
{
public:
    enum Type : unsigned
    {
        kLocal = 0,
        kInternational = 1
    };

    /// A named picture of negative amounts. A value.
    class NegativeFormat
    {
    public:
        NegativeFormat() = default;
        NegativeFormat(String format, String tag) : m_sFormat(std::move(format)), m_sTag(std::move(tag)) {}

        /// The whole picture, sign or brackets included, such as "-$#".
        const String& getFormat() const noexcept { return m_sFormat; }
        /// Its name, such as "minus".
        const String& getTag() const noexcept { return m_sTag; }

    private:
        String m_sFormat;
        String m_sTag;
    };

    /// By tag, case-sensitive.
    using NegativeFormats = std::map<String, NegativeFormat>;

    /// A record without meaning until CurrencyLookup fills it.
    Currency();
    // What is published stays as it is: only clone() copies.
    Currency& operator=(const Currency&) = delete;

    const String& getCurrencySymbol() const noexcept { return m_sCurrencySymbol; }
    const String& getFormat() const noexcept { return m_sFormat; }
    /// The unique key, such as "EUR".
    const String& getTag() const noexcept { return m_sTag; }
    /// -1 when not given: the host's number format decides.
    std::int32_t getDefaultDigits() const noexcept { return m_nDigits; }
    Type getType() const noexcept { return m_eType; }
    /// "minus" and "parens" are always among them.
    const NegativeFormats& getNegativeFormats() const noexcept { return m_vNegativeFormats; }
    /// Whether it is offered where a user chooses a currency.
    bool displayAsChoice() const noexcept { return m_bDisplay; }
    /// Assigns the caption; undefined when it has none.
    void getDisplayMessage(GDVariantBase& out) const;
    /// Assigns the name; undefined when it has none.
    void getDisplayName(GDVariantBase& out) const;
    /// The negative format to use by default.
    const String& getPreferredNegativeTag() const noexcept { return m_sPreferredNegativeTag; }
    /// Stored for the host, not interpreted here.
    bool isPlaceholder() const noexcept { return m_bPlaceholder; }
    /// Stored for the host, not interpreted here.
    bool useThousandsSeparator() const noexcept { return m_bThousandsSeparator; }
    /// The locale definition that a local currency belongs to; may be empty.
    const String& getLocaleDefinitionName() const noexcept { return m_sLocaleDefinitionName; }
    void setLocaleDefinitionName(const String& name) { m_sLocaleDefinitionName = name; }

    /// A new record, equal in every field, with reference count 0: the caller owns it and wraps it in a Handle.
    Currency* clone() const;

    /// The caption for people. Its own, resolved in `messages`; else for an international currency its symbol, for a
    /// local one the message kmsgCurrencyFormatLocaleCurrencyHeading with the symbol and the name of its locale as
    /// inserts, or the symbol when the process's catalogue does not allow that locale. `messages` may be null: then a
    /// caption of its own stays a reference.
    void getResolvedCurrencyDisplayMessage(const Handle<const MessageTable>& messages,
                                           GDAdjustableSizeVariant<16>& out) const;
    /// The name for people: its own as it is, a reference that a formatter resolves, when `messages` has a text for it;
    /// else the caption. `messages` may be null: then a name of its own is always taken.
    void getResolvedCurrencyDisplayName(const Handle<const MessageTable>& messages,
                                        GDAdjustableSizeVariant<16>& out) const;

private:
    friend class CurrencyReader;  // fills the fields while it builds a record

    void setSymbol(String symbol);

    Currency(const Currency&);
    ~Currency() override;

    void captionOfLocale(const Handle<const MessageTable>& messages, GDAdjustableSizeVariant<16>& out) const;
    GDVariant buildCaptionOfLocale(const LocaleTagLookup& locales, const Handle<const MessageTable>& messages) const;

    String m_sCurrencySymbol;
    String m_sFormat;
    String m_sTag;
    std::int32_t m_nDigits = -1;
    NegativeFormats m_vNegativeFormats;
    GDAdjustableSizeVariant<16> m_tDisplayMessage;
    GDAdjustableSizeVariant<16> m_tDisplayName;
    String m_sLocaleDefinitionName;
    Type m_eType = kLocal;
    String m_sPreferredNegativeTag;
    bool m_bDisplay = true;
    bool m_bPlaceholder = false;
    bool m_bThousandsSeparator = false;
    // What captions without a message of their own are made of: the symbol, and the heading that it stands in.
    Message m_tSymbolText;
    Message m_tHeading;
    // The captions that it was asked for; none for records that may change.
    Handle<i18n_details::CaptionMemory> m_hCaptions;
};

}  // namespace vel
