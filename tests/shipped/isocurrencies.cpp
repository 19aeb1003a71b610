#include "isocurrencies.h"

#include <sstream>
#include <stdexcept>

#include "plainxml.h"
#include "textrows.h"

namespace shipped {

std::set<std::string> isoCodes()
{
    // A list of flat objects, each with one member "alpha_3": "EUR".
    const std::string member = "\"alpha_3\"";
    const std::string table = readBytes(WEBI18N_ISO_4217);
    std::set<std::string> codes;
    for (size_t at = table.find(member); at != std::string::npos; at = table.find(member, at)) {
        at += member.size();
        codes.insert(table.substr(table.find('"', at) + 1, 3));
    }
    if (codes.empty()) {
        throw std::runtime_error(std::string("no currency in ") + WEBI18N_ISO_4217);
    }
    return codes;
}

std::map<std::string, std::string> isoDigits()
{
    std::map<std::string, std::string> digits;
    for (const std::string& code : isoCodes()) {
        digits[code] = "2";
    }
    for (const testsupport::TextRow& row :
         testsupport::readRows(std::string(WEBI18N_SOURCE_DIR) + "/isominorunits.txt", 3)) {
        std::istringstream codes(row.field(1));
        for (std::string code; codes >> code;) {
            digits.at(code) = row.field(0);
        }
    }
    return digits;
}

}  // namespace shipped
