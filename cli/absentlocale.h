#pragma once

#include "output.h"
#include "session.h"

namespace cli {

/// Answers for a name that is not among the allowed locales: in a batch as the name's own answer, else as an error.
void refuseLocale(const vel::String& name, Session& session, Output& output);

}  // namespace cli
