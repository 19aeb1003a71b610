#include <iostream>

#include "early.h"

int main()
{
    for (const std::string& fault : earlyFaults()) {
        std::cerr << "does not hold in a static initialiser: " << fault << '\n';
    }
    constexpr int kLeastChecks = 21;
    if (earlyChecks() < kLeastChecks) {
        std::cerr << "only " << earlyChecks() << " checks were made\n";
        return 1;
    }
    return earlyFaults().empty() ? 0 : 1;
}
