#pragma once

#include <string>
#include <vector>

/// What the static initialisers of early.cpp found wrong; filled before main.
const std::vector<std::string>& earlyFaults();
/// How many checks they made: a program whose early object was left out must not pass.
int earlyChecks();
