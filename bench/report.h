#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "harness.h"

namespace bench {

/// The table on standard output, a line as soon as its row is measured.
class Table
{
public:
    /// Prints the head; the rows to come give the width of the columns.
    Table(const std::vector<const Situation*>& rows, std::size_t batches);

    void print(const Result& result) const;

private:
    std::size_t m_nNameWidth;
    std::size_t m_nPeerWidth;
};

/// Writes the results as one JSON object. Throws std::runtime_error when the file cannot be written.
void writeJson(const std::string& file, const std::vector<Result>& results);

}  // namespace bench
