#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tests {

/// One client that means harm, until it is told that it is enough; which attack it begins with depends on its number.
/// The attacks: single bytes around a deadline; a body of very many keys; large answers that are not read; requests
/// whose end is said wrongly. It does not look at the answers, and closed connections are made again.
void attack(std::uint16_t port, std::size_t number, const std::atomic<bool>& isEnough);

}  // namespace tests
