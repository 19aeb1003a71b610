#include "messagetexts.h"

#include <string_view>

namespace datapack {
namespace {

struct Translation
{
    std::string_view language;
    std::string_view invalid;       // the tag is malformed or unknown
    std::string_view notSupported;  // the locale exists but is not allowed
};

// English stands first: it is what a language without a row gets.
constexpr Translation kaTranslations[] = {
    {"en", "Invalid locale: %1", "Locale not supported: %1"},
    {"ar", "إعدادات محلية غير صالحة: %1", "إعدادات محلية غير مدعومة: %1"},
    {"bg", "Невалидни регионални настройки: %1", "Неподдържани регионални настройки: %1"},
    {"ca", "Configuració regional no vàlida: %1", "Configuració regional no admesa: %1"},
    {"cs", "Neplatné národní prostředí: %1", "Nepodporované národní prostředí: %1"},
    {"da", "Ugyldig landestandard: %1", "Landestandarden understøttes ikke: %1"},
    {"de", "Ungültiges Gebietsschema: %1", "Nicht unterstütztes Gebietsschema: %1"},
    {"el", "Μη έγκυρη τοπική ρύθμιση: %1", "Μη υποστηριζόμενη τοπική ρύθμιση: %1"},
    {"es", "Configuración regional no válida: %1", "Configuración regional no admitida: %1"},
    {"fi", "Virheellinen maa-asetus: %1", "Maa-asetusta ei tueta: %1"},
    {"fr", "Paramètres régionaux non valides : %1", "Paramètres régionaux non pris en charge : %1"},
    {"he", "הגדרות אזוריות לא חוקיות: %1", "הגדרות אזוריות לא נתמכות: %1"},
    {"hr", "Nevažeća regionalna postavka: %1", "Nepodržana regionalna postavka: %1"},
    {"hu", "Érvénytelen területi beállítás: %1", "Nem támogatott területi beállítás: %1"},
    {"id", "Lokal tidak valid: %1", "Lokal tidak didukung: %1"},
    {"it", "Impostazioni locali non valide: %1", "Impostazioni locali non supportate: %1"},
    {"ja", "無効なロケール: %1", "サポートされていないロケール: %1"},
    {"ko", "잘못된 로캘: %1", "지원되지 않는 로캘: %1"},
    {"nb", "Ugyldig nasjonal innstilling: %1", "Den nasjonale innstillingen støttes ikke: %1"},
    {"nl", "Ongeldige landinstelling: %1", "Niet-ondersteunde landinstelling: %1"},
    {"pl", "Nieprawidłowe ustawienia regionalne: %1", "Nieobsługiwane ustawienia regionalne: %1"},
    {"pt", "Localidade inválida: %1", "Localidade não suportada: %1"},
    {"ro", "Setare regională nevalidă: %1", "Setare regională neacceptată: %1"},
    {"ru", "Недопустимый языковой стандарт: %1", "Языковой стандарт не поддерживается: %1"},
    {"sk", "Neplatné miestne nastavenie: %1", "Nepodporované miestne nastavenie: %1"},
    {"sv", "Ogiltig nationell inställning: %1", "Den nationella inställningen stöds inte: %1"},
    {"tr", "Geçersiz yerel ayar: %1", "Desteklenmeyen yerel ayar: %1"},
    {"uk", "Неприпустимий мовний стандарт: %1", "Мовний стандарт не підтримується: %1"},
    {"vi", "Miền địa phương không hợp lệ: %1", "Miền địa phương không được hỗ trợ: %1"},
    {"zh", "无效的区域设置：%1", "不支持的区域设置：%1"},
    {"zh-Hant", "無效的地區設定：%1", "不支援的地區設定：%1"},
};

const Translation& translationFor(std::string_view language)
{
    for (const Translation& translation : kaTranslations) {
        if (translation.language == language) {
            return translation;
        }
    }
    return kaTranslations[0];
}

}  // namespace

std::vector<std::pair<std::string, std::string>> messageTexts(const std::string& language)
{
    const Translation& translation = translationFor(language);
    return {
        {"kmsgInvalidLocaleTag", std::string(translation.invalid)},
        {"kmsgNotSupportedLocaleTag", std::string(translation.notSupported)},
        // A local currency's caption: its symbol and the name of its locale. Punctuation only, the same everywhere.
        {"kmsgCurrencyFormatLocaleCurrencyHeading", "%1 (%2)"},
    };
}

}  // namespace datapack
