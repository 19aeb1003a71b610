#include "progress.h"

#include <unistd.h>

#include <cstdio>

namespace cli {

namespace {

constexpr std::chrono::milliseconds kInterval(250);

}  // namespace

Progress::Progress() : m_bTerminal(::isatty(STDERR_FILENO) == 1), m_tNext(std::chrono::steady_clock::now() + kInterval)
{}

Progress::~Progress()
{
    if (m_bShown) {
        std::fputs("\r\033[K", stderr);
    }
}

void Progress::show(std::size_t count, const char* what)
{
    if (!m_bTerminal) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now >= m_tNext) {
        std::fprintf(stderr, "\rwebi18n: %zu %s\033[K", count, what);
        m_bShown = true;
        m_tNext = now + kInterval;
    }
}

}  // namespace cli
