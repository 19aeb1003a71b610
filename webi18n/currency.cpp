#include "webi18n/currency.h"

#include "i18nmessages.h"
#include "vel/core/message.h"
#include "vel/core/staticinit.h"
#include "webi18n/localetaglookup.h"

namespace vel {

namespace {

VEL_INIT_VALUES const Message g_tNoSymbol = Message::text(String());
VEL_INIT_VALUES const Message g_tHeadingWithoutSymbol =
    Message(i18n_details::kmsgCurrencyFormatLocaleCurrencyHeading).insert(1, g_tNoSymbol);

}  // namespace

Currency::Currency() : m_tSymbolText(g_tNoSymbol), m_tHeading(g_tHeadingWithoutSymbol)
{}

Currency::Currency(const Currency&) = default;
Currency::~Currency() = default;

void Currency::setSymbol(String symbol)
{
    m_sCurrencySymbol = std::move(symbol);
    m_tSymbolText = Message::text(m_sCurrencySymbol);
    m_tHeading = Message(i18n_details::kmsgCurrencyFormatLocaleCurrencyHeading).insert(1, m_tSymbolText);
}

Currency* Currency::clone() const
{
    return new Currency(*this);
}

void Currency::getDisplayMessage(GDVariantBase& out) const
{
    out = m_tDisplayMessage;
}

void Currency::getDisplayName(GDVariantBase& out) const
{
    out = m_tDisplayName;
}

namespace {

/// Whether `out` is a text of its own, once its references are resolved.
bool resolve(const Handle<const MessageTable>& messages, GDAdjustableSizeVariant<16>& out)
{
    if (!messages.isNull() && !out.isUndefinedOrNull()) {
        out = messages->resolveReferences(out);
    }
    return !out.isUndefinedOrNull();
}

}  // namespace

void Currency::getResolvedCurrencyDisplayMessage(const Handle<const MessageTable>& messages,
                                                 GDAdjustableSizeVariant<16>& out) const
{
    out = m_tDisplayMessage;
    if (resolve(messages, out)) {
        return;
    }
    out = GDVariant::message(m_eType == kInternational ? m_tSymbolText : captionOfLocale(messages));
}

void Currency::getResolvedCurrencyDisplayName(const Handle<const MessageTable>& messages,
                                              GDAdjustableSizeVariant<16>& out) const
{
    out = m_tDisplayName;
    if (!resolve(messages, out)) {
        getResolvedCurrencyDisplayMessage(messages, out);
    }
}

/// The heading of a local currency, or its symbol when its locale is not among the allowed ones.
Message Currency::captionOfLocale(const Handle<const MessageTable>& messages) const
{
    const Locale* const locale = LocaleTagLookup::getInstance().findSupported(m_sLocaleDefinitionName);
    return locale == nullptr ? m_tSymbolText : Message(m_tHeading).insert(2, locale->nameIn(messages));
}

}  // namespace vel
