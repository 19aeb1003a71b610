#include "icutext.h"

#include <stdexcept>

namespace datapack {

void checkIcu(UErrorCode status, const std::string& what)
{
    if (U_FAILURE(status)) {
        throw std::runtime_error("ICU: " + what + ": " + u_errorName(status));
    }
}

std::string toUtf8(const icu::UnicodeString& text)
{
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

icu::UnicodeString typable(const icu::UnicodeString& text)
{
    icu::UnicodeString result;
    for (int32_t index = 0; index < text.length(); ++index) {
        const char16_t unit = text.charAt(index);
        switch (unit) {
        case 0x200E:  // left-to-right mark
        case 0x200F:  // right-to-left mark
        case 0x061C:  // Arabic letter mark
            break;
        case 0x00A0:  // no-break space
        case 0x202F:  // narrow no-break space
        case 0x2009:  // thin space
            result.append(u' ');
            break;
        default:
            result.append(unit);
        }
    }
    return result;
}

std::string typableSeparator(const icu::UnicodeString& text)
{
    icu::UnicodeString result = typable(text);
    result.findAndReplace(icu::UnicodeString(u'\u2019'), icu::UnicodeString(u'\''));
    result.findAndReplace(icu::UnicodeString(u'\u060C'), icu::UnicodeString(u','));
    return toUtf8(result);
}

}  // namespace datapack
