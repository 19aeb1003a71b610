#include "webi18n/currency.h"

#include "i18nmessages.h"
#include "vel/core/message.h"
#include "webi18n/localetaglookup.h"

namespace vel {

Currency::Currency() = default;
Currency::Currency(const Currency&) = default;
Currency::~Currency() = default;

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
    if (!messages.isNull()) {
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
    out = m_eType == kInternational ? GDVariant::message(Message::text(m_sCurrencySymbol)) : captionOfLocale(messages);
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
GDVariant Currency::captionOfLocale(const Handle<const MessageTable>& messages) const
{
    Message symbol = Message::text(m_sCurrencySymbol);
    Locale locale;
    if (!LocaleTagLookup::getInstance().findLocaleByDefinitionName(m_sLocaleDefinitionName, locale)) {
        return GDVariant::message(std::move(symbol));
    }
    const GDVariant name = locale.getLocaleMessage(messages);
    Message heading = i18n_details::kmsgCurrencyFormatLocaleCurrencyHeading;
    heading.insert(1, std::move(symbol));
    heading.insert(2, name.asMessage() == nullptr ? Message::text(name.toString()) : *name.asMessage());
    return GDVariant::message(std::move(heading));
}

}  // namespace vel
