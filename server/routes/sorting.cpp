#include "answers/sortanswer.h"
#include "answers/text.h"
#include "fields.h"
#include "routes/routes.h"
#include "serverlimits.h"

namespace server {

using answers::Json;
using vel::String;
using vel::i18n::CollationStrength;

namespace {

struct Strength
{
    const char* m_pName;
    CollationStrength m_eStrength;
};

constexpr Strength kStrengths[] = {{"primary", vel::i18n::kCollationStrengthPrimaryFlag},
                                   {"secondary", vel::i18n::kCollationStrengthSecondaryFlag},
                                   {"tertiary", vel::i18n::kCollationStrengthTertiaryFlag},
                                   {"quaternary", vel::i18n::kCollationStrengthQuarnaryFlag},
                                   {"identical", vel::i18n::kCollationStrengthIdentical}};

/// By its name, or by the number that the command takes.
CollationStrength strengthIn(const Fields& fields)
{
    const String text = fields.text("strength").value_or(String());
    if (text.isEmpty() || text == L"0") {
        return vel::i18n::kCollationStrengthDefault;
    }
    const std::string written = answers::utf8Text(text);
    for (const auto& [name, strength] : kStrengths) {
        if (written == name || written == std::to_string(strength)) {
            return strength;
        }
    }
    throw Refusal{400,
                  "bad-field",
                  "The field strength is not accepted: accepted are primary, secondary, tertiary, quaternary and "
                  "identical, or 0, 1, 2, 4, 8 and 16.",
                  {},
                  "strength"};
}

/// The one that is asked for, without regard to case, else the locale's own.
String sortIn(const Fields& fields, const Call& call, const vel::Locale& locale)
{
    const String asked = fields.text("sort").value_or(String());
    if (asked.isEmpty()) {
        return locale.getInfoAsString(vel::Locale::kCollationNLS_SORT);
    }
    std::string names;
    for (const String& each : call.catalogues().sorts()) {
        if (asked.equalsNoCase(each)) {
            return each;
        }
        names += (names.empty() ? "" : ", ") + answers::utf8Text(each);
    }
    throw Refusal{400, "no-such-sort", "There is no such sort here; accepted are " + names + ".", {}, "sort"};
}

}  // namespace

HttpAnswer answerSort(const Call& call)
{
    const Fields fields(call, {"sort", "strength"}, "lines", "line");
    const vel::Locale locale = call.locale();
    const CollationStrength strength = strengthIn(fields);
    const String sort = sortIn(fields, call, locale);
    const std::vector<std::string>& lines = fields.texts(kLineBytes);
    call.count(kStageSorting);
    try {
        answers::KeyMaker maker(sort, strength);
        return call.answer(answers::describeSorted(lines, maker, kAnswerBytes), locale);
    } catch (const answers::TooLarge&) {
        throw answerTooLarge();
    } catch (const answers::NoSuchSort& fault) {
        throw Refusal{400, "no-such-sort", fault.what(), {}, "sort"};
    }
}

HttpAnswer answerSorts(const Call& call)
{
    const vel::Locale locale = call.locale();
    Json json;
    json["locale"] = answers::utf8Text(locale.definitionName());
    json["sort"] = answers::utf8Text(locale.getInfoView(vel::Locale::kCollationNLS_SORT));
    json["sorts"] = Json::array();
    for (const String& each : call.catalogues().sorts()) {
        json["sorts"].push_back(answers::utf8Text(each));
    }
    json["strengths"] = Json::array();
    for (const Strength& each : kStrengths) {
        json["strengths"].push_back(each.m_pName);
    }
    return call.answer(json, locale);
}

}  // namespace server
