#include "answers/currencyanswer.h"

#include "answers/text.h"

namespace answers {

namespace {

using vel::Currency;
using vel::String;

constexpr const wchar_t* ksHeading = L"kmsgCurrencyFormatLocaleCurrencyHeading";  // of local currencies

/// By tag. Appended: looking each up among those before would take long where a file has very many.
Json negativeFormats(const Currency& currency)
{
    Json json = Json::object();
    auto& members = json.get_ref<Json::object_t&>();
    for (const auto& [tag, negative] : currency.getNegativeFormats()) {
        members.push_back({utf8Text(tag), utf8Text(negative.getFormat())});
    }
    return json;
}

/// The key of a caption; empty when there is none.
String keyOf(const vel::GDVariant& caption)
{
    const vel::Message* message = caption.asMessage();
    return message == nullptr ? String() : message->keyOrText();
}

void addCaptions(const Currency& currency, const Captions& captions, Json& json)
{
    vel::GDAdjustableSizeVariant<16> text;
    currency.getDisplayMessage(text);
    const String captionKey = keyOf(text);
    const Captions::Table& table = captions.tableFor(captions.has(captionKey) ? captionKey : ksHeading);
    currency.getResolvedCurrencyDisplayMessage(table, text);
    json["caption"] = utf8Text(Captions::format(text, table));

    currency.getDisplayName(text);
    const String nameKey = keyOf(text);
    const Captions::Table& names = captions.has(nameKey) ? captions.tableFor(nameKey) : table;
    currency.getResolvedCurrencyDisplayName(names, text);
    json["name"] = utf8Text(Captions::format(text, names));
}

}  // namespace

Json describeCurrency(const Currency& currency, const Captions& captions)
{
    Json json;
    json["tag"] = utf8Text(currency.getTag());
    json["type"] = currency.getType() == Currency::kLocal ? "local" : "international";
    json["symbol"] = utf8Text(currency.getCurrencySymbol());
    json["digits"] = currency.getDefaultDigits();
    json["format"] = utf8Text(currency.getFormat());
    json["negativeFormats"] = negativeFormats(currency);
    json["preferredNegativeTag"] = utf8Text(currency.getPreferredNegativeTag());
    json["display"] = currency.displayAsChoice();
    json["placeholder"] = currency.isPlaceholder();
    json["thousandsSeparator"] = currency.useThousandsSeparator();
    addCaptions(currency, captions, json);
    return json;
}

}  // namespace answers
