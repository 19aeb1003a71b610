#include "webi18n/currency.h"

#include <utility>

#include "captionmemory.h"
#include "i18nmessages.h"
#include "localetaglookupstate.h"
#include "vel/core/message.h"
#include "vel/core/staticinit.h"

namespace vel {

namespace {

VEL_INIT_VALUES const StaticValue<Message> g_tNoSymbol([] { return Message::text(String()); });
VEL_INIT_VALUES const StaticValue<Message> g_tHeadingWithoutSymbol([] {
    return Message(i18n_details::kmsgCurrencyFormatLocaleCurrencyHeading).insert(1, *g_tNoSymbol);
});

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
    Currency* const copy = new Currency(*this);
    copy->m_hCaptions = {};  // it may be changed
    return copy;
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

/// Assigns what the currency's own message is in `messages`; false, and nothing assigned, when that is nothing.
bool resolve(const GDVariant& own, const Handle<const MessageTable>& messages, GDVariant& out)
{
    if (own.isUndefinedOrNull()) {
        return false;
    }
    GDVariant resolved = messages.isNull() ? own : messages->resolveReferences(own);
    if (resolved.isUndefinedOrNull()) {
        return false;
    }
    out = std::move(resolved);
    return true;
}

}  // namespace

void Currency::getResolvedCurrencyDisplayMessage(const Handle<const MessageTable>& messages,
                                                 GDAdjustableSizeVariant<16>& out) const
{
    if (resolve(m_tDisplayMessage, messages, out)) {
        return;
    }
    if (m_eType == kInternational) {
        out = GDVariant::message(m_tSymbolText);
    } else {
        captionOfLocale(messages, out);
    }
}

void Currency::getResolvedCurrencyDisplayName(const Handle<const MessageTable>& messages,
                                              GDAdjustableSizeVariant<16>& out) const
{
    if (resolve(m_tDisplayName, messages, out)) {
        out = m_tDisplayName;  // not what it is resolved to: unlike a caption, a name stays a reference
    } else {
        getResolvedCurrencyDisplayMessage(messages, out);
    }
}

/// The heading of a local currency, or its symbol when its locale is not among the allowed ones.
void Currency::captionOfLocale(const Handle<const MessageTable>& messages, GDAdjustableSizeVariant<16>& out) const
{
    const LocaleTagLookup& locales = LocaleTagLookup::getInstance();
    if (messages.isNull() || m_hCaptions.isNull()) {
        out = buildCaptionOfLocale(locales, messages);
        return;
    }
    const i18n_details::CaptionMemory::Key key{messages.get()->version(),
                                               locales.m_pState->m_tSupportedLocales.version()};
    if (!m_hCaptions.get()->find(key, out)) {
        out = buildCaptionOfLocale(locales, messages);
        m_hCaptions.get()->keep(key, out);
    }
}

GDVariant Currency::buildCaptionOfLocale(const LocaleTagLookup& locales,
                                         const Handle<const MessageTable>& messages) const
{
    const Locale* const locale = locales.findSupported(m_sLocaleDefinitionName);
    return GDVariant::message(locale == nullptr ? m_tSymbolText
                                                : Message(m_tHeading).insert(2, locale->nameIn(messages)));
}

}  // namespace vel
