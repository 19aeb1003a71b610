#include "switch.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <ctime>
#include <fstream>

namespace mutants {

namespace {

constexpr std::size_t kMostMutants = 65536;
constinit std::array<std::atomic<bool>, kMostMutants> s_aReached{};

unsigned chosenOne() noexcept
{
    const char* const chosen = std::getenv("MUTANT");
    return chosen == nullptr ? 0 : static_cast<unsigned>(std::strtoul(chosen, nullptr, 10));
}

/// Writes a line for each test: its name, its processor time in milliseconds, the mutants that it reached. What is
/// reached before the first test, or for all tests of a suite, stands in lines of its own, named "*" and "Suite.*".
class Recorder final : public testing::EmptyTestEventListener
{
public:
    explicit Recorder(const char* file) : m_tFile(file) {}

private:
    void OnTestStart(const testing::TestInfo& test) override
    {
        write(m_bStarted ? std::string(test.test_suite_name()) + ".*" : "*");
        m_bStarted = true;
    }
    void OnTestEnd(const testing::TestInfo& test) override
    {
        write(std::string(test.test_suite_name()) + "." + test.name());
    }
    void write(const std::string& name)
    {
        const std::clock_t now = std::clock();
        m_tFile << name << ' ' << (now - m_nLast) * 1000 / CLOCKS_PER_SEC;
        for (std::size_t number = 0; number < kMostMutants; ++number) {
            if (s_aReached[number].exchange(false, std::memory_order_relaxed)) {
                m_tFile << ' ' << number;
            }
        }
        m_tFile << std::endl;
        m_nLast = std::clock();
    }

    std::ofstream m_tFile;
    std::clock_t m_nLast = 0;
    bool m_bStarted = false;
};

const bool s_bListens = [] {
    if (const char* const file = std::getenv("MUTANTS_RECORD"); file != nullptr) {
        testing::UnitTest::GetInstance()->listeners().Append(new Recorder(file));
    }
    return true;
}();

}  // namespace

bool isChosen(unsigned number) noexcept
{
    static const unsigned chosen = chosenOne();
    s_aReached[number].store(true, std::memory_order_relaxed);
    return number == chosen;
}

}  // namespace mutants
