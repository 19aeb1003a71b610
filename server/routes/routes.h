#pragma once

#include "call.h"

namespace server {

// What each address answers. They throw Refusal for what the client did wrong.

/// Header and requested language through the mapping: the locale, the rule, what was skipped and why.
HttpAnswer answerResolve(const Call& call);
/// Everything that the locale holds.
HttpAnswer answerLocale(const Call& call);
/// The allowed locales with their names in the reader's language and in their own.
HttpAnswer answerLocales(const Call& call);
HttpAnswer answerLanguages(const Call& call);
HttpAnswer answerJava(const Call& call);
/// What a typed text says.
HttpAnswer answerParse(const Call& call);
/// How dates, numbers, amounts and a month look in the locale.
HttpAnswer answerRender(const Call& call);
HttpAnswer answerCurrencies(const Call& call);
/// What a response is encoded in.
HttpAnswer answerCharset(const Call& call);
/// The character sets that there are.
HttpAnswer answerCharsets(const Call& call);
/// A text's bytes in a character set.
HttpAnswer answerEncode(const Call& call);
/// Lines in the order of a sort, with their keys.
HttpAnswer answerSort(const Call& call);
/// The sorts that can be asked for.
HttpAnswer answerSorts(const Call& call);
/// Which of the user's overrides are accepted, what is wrong with the others, the cookie that brings them and what they
/// make of the locale. Those of the request's own cookie do not count.
HttpAnswer answerPreferences(const Call& call);

}  // namespace server
