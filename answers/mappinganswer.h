#pragma once

#include <string_view>

#include "answers/json.h"
#include "webi18n/localemapping.h"

namespace answers {

/// `index`, `matches` and `definition` of a rule.
Json describeRule(const vel::LocaleMappingRule& rule);

/// Why a rule that matched was not applied: "no target" or "not allowed".
const char* reasonOf(const vel::LocaleMappingRule& skipped);

/// The rule with its `reason`.
Json describeSkipped(const vel::LocaleMappingRule& skipped);

/// `input`, `language`, `locale`, `rule` (null when the built-in locale was taken) and the `skipped` rules.
Json describeMapping(std::wstring_view input, const vel::LocaleMappingExplanation& why);

}  // namespace answers
