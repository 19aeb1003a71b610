#pragma once

#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "vel/core/assertion.h"

namespace testsupport {

/// What a capture throws when it was told to: no relative of any exception of the library.
struct ThrownByAssertion
{};

/// Records the assertion reports of all threads while it lives and puts the handler before it back afterwards. One at a
/// time.
class AssertionCapture
{
public:
    enum Reaction
    {
        kReturn,
        kThrow
    };

    explicit AssertionCapture(Reaction reaction = kReturn)
    {
        shared().m_eReaction = reaction;
        shared().m_tReports.clear();
        m_pBefore = vel::setAssertionHandler(reaction == kReturn ? record : recordAndThrow);
    }
    ~AssertionCapture() { vel::setAssertionHandler(m_pBefore); }
    AssertionCapture(const AssertionCapture&) = delete;
    AssertionCapture& operator=(const AssertionCapture&) = delete;

    struct Report
    {
        std::string m_sText;
        std::string m_sFile;
        int m_nLine;
    };
    std::vector<Report> reports() const
    {
        const std::lock_guard<std::mutex> lock(shared().m_tMutex);
        return shared().m_tReports;
    }
    /// The texts alone, in order.
    std::vector<std::string> texts() const
    {
        std::vector<std::string> result;
        for (const Report& each : reports()) {
            result.push_back(each.m_sText);
        }
        return result;
    }

private:
    struct Shared
    {
        std::mutex m_tMutex;
        std::vector<Report> m_tReports;
        Reaction m_eReaction = kReturn;
    };
    static Shared& shared()
    {
        static Shared instance;
        return instance;
    }
    static void record(const vel::AssertionReport& report)
    {
        const std::lock_guard<std::mutex> lock(shared().m_tMutex);
        shared().m_tReports.push_back({report.m_pText, report.m_pFile, report.m_nLine});
    }
    static void recordAndThrow(const vel::AssertionReport& report)
    {
        record(report);
        throw ThrownByAssertion();
    }

    vel::AssertionHandler m_pBefore;
};

}  // namespace testsupport
