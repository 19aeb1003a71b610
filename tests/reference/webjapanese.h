#pragma once

#include <memory>

#include "webencodings.h"

namespace reference {

std::unique_ptr<const WebEncoding> eucJp();
std::unique_ptr<const WebEncoding> shiftJis();
std::unique_ptr<const WebEncoding> iso2022Jp();

}  // namespace reference
