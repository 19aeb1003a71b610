#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace cli {

/// Says on standard error how far a long work is, a few times a second, when that is a terminal; otherwise nothing.
class Progress
{
public:
    Progress();
    /// Wipes the line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// `count` is what is done so far, such as lines; `what` names it.
    void show(std::size_t count, const char* what);

private:
    bool m_bTerminal;
    bool m_bShown = false;
    std::chrono::steady_clock::time_point m_tNext;
};

}  // namespace cli
