#include "vel/config/config.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>

#include "vel/log/logger.h"

namespace vel {

namespace {

constexpr LogSource klsConfigLoad(L"vel.config.load");

/// The living objects by the number of their creation, and the global reader.
class Registry
{
public:
    void add(ConfigBase& object)
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        m_tObjects.emplace(++m_nLastNumber, &object);
    }
    void remove(const ConfigBase& object) noexcept
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        std::erase_if(m_tObjects, [&](const auto& entry) { return entry.second == &object; });
    }
    /// The first object created after the one of that number, which is moved on to it; null when there is none.
    ConfigBase* next(std::uint64_t& number)
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        const auto found = m_tObjects.upper_bound(number);
        if (found == m_tObjects.end()) {
            return nullptr;
        }
        number = found->first;
        return found->second;
    }
    Handle<const ConfigReader> reader()
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        return m_hReader;
    }
    void setReader(Handle<const ConfigReader>& reader) noexcept
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        m_hReader.swap(reader);
    }

private:
    std::mutex m_tMutex;
    std::map<std::uint64_t, ConfigBase*> m_tObjects;
    std::uint64_t m_nLastNumber = 0;
    Handle<const ConfigReader> m_hReader;
};

Registry& registry()
{
    // Never destroyed: objects with static storage duration may go after it would have.
    static Registry* const kRegistry = new Registry;
    return *kRegistry;
}

void logException(const Message& message)
{
    const ScopedLogSource source(klsConfigLoad);
    VEL_LOG(kLogWarning, Message::text(L"Loading the configuration of an object failed: %1").insert(1, message));
}

constinit std::atomic<ConfigBase::ExceptionReport> g_exceptionReport{logException};

}  // namespace

ConfigBase::ConfigBase(EConfigReload reload) : m_eReload(reload)
{
    registry().add(*this);
}

ConfigBase::~ConfigBase()
{
    registry().remove(*this);
}

void ConfigBase::load(const ConfigReader& reader)
{
    if (m_eState == kInitialized && m_eReload != kConfigSupportReload) {
        return;
    }
    try {
        if (callLoadConfig(reader, m_eState == kCreated ? kConfigInitialize : kConfigReload)) {
            m_eState = kInitialized;
        }
    } catch (const Exception& exception) {
        g_exceptionReport.load()(exception.message());
        throw;
    } catch (const std::exception& exception) {
        const String what = stringFromUtf8(exception.what()).value_or(L"(unreadable text)");
        g_exceptionReport.load()(Message::text(what));
        throw;
    }
}

void ConfigBase::loadAll(const ConfigReader& reader)
{
    std::uint64_t number = 0;
    while (ConfigBase* object = registry().next(number)) {
        object->load(reader);
    }
}

Handle<const ConfigReader> ConfigBase::globalReader()
{
    return registry().reader();
}

void ConfigBase::setGlobalReader(Handle<const ConfigReader> reader)
{
    // The old one goes with the parameter, outside the registry's lock.
    registry().setReader(reader);
}

ConfigBase::ExceptionReport ConfigBase::setExceptionReport(ExceptionReport report) noexcept
{
    return g_exceptionReport.exchange(report == nullptr ? logException : report);
}

}  // namespace vel
