/// \file
/// What ISO 4217 says, from the iso-codes package's table and the rows of isominorunits.txt.
#pragma once

#include <map>
#include <set>
#include <string>

namespace shipped {

/// Every code of the package's table. \throws std::runtime_error when the table cannot be read or has no code.
std::set<std::string> isoCodes();

/// The digits of each of isoCodes(): a number, or "-" where ISO gives none.
std::map<std::string, std::string> isoDigits();

}  // namespace shipped
