#pragma once

#include <exception>

#include "vel/config/configreader.h"
#include "vel/core/api.h"
#include "vel/core/assertion.h"
#include "vel/core/exception.h"
#include "vel/core/handle.h"

namespace vel {

/// Why an object's loadConfig is called.
enum EConfig
{
    kConfigInitialize = 0,
    kConfigReload = 1,
    kConfigEnd_ = 2
};

/// Whether an object takes configuration changes after its first load.
enum EConfigReload
{
    kConfigDontSupportReload = 0,
    kConfigSupportReload = 1,
    kConfigReloadEnd_ = 2
};

/// The registration of one object with the configuration framework. The framework knows every living ConfigBase and
/// loads them in the order of their creation. Registration is safe from any thread; loading runs on one thread while
/// nothing else reads the objects.
class WEBI18N_API ConfigBase
{
public:
    enum State
    {
        kCreated = 0,
        kInitialized = 1,
        kStateEnd_ = 2
    };

    ConfigBase(const ConfigBase&) = delete;
    ConfigBase& operator=(const ConfigBase&) = delete;

    State state() const noexcept { return m_eState; }
    EConfigReload reloadCapability() const noexcept { return m_eReload; }

    /// The framework's load of this object: in state kCreated loads with kConfigInitialize and moves to kInitialized;
    /// in state kInitialized loads with kConfigReload when the object supports reload, else does nothing. An exception
    /// of the object that derives from std::exception is reported (setExceptionReport); every one is passed on, and the
    /// state stays.
    void load(const ConfigReader& reader);

    /// Loads every registered object, those included that are created meanwhile. Stops at the first exception, which
    /// passes.
    static void loadAll(const ConfigReader& reader);

    /// The process's global reader, which new objects load from at once; may be null.
    static Handle<const ConfigReader> globalReader();
    static void setGlobalReader(Handle<const ConfigReader> reader);

    /// Receives what an object's loadConfig threw out of load(). `message` is the exception's text. An exception of the
    /// report passes in place of the object's.
    using ExceptionReport = void (*)(const Message& message);
    /// Replaces the process-wide report, returns the one before; null restores the initial one, which logs a warning.
    static ExceptionReport setExceptionReport(ExceptionReport report) noexcept;

protected:
    explicit ConfigBase(EConfigReload reload);
    virtual ~ConfigBase();

    /// Calls the recorded object's loadConfig; false when there is no object, and then the state stays.
    virtual bool callLoadConfig(const ConfigReader& reader, EConfig mode) = 0;

private:
    EConfigReload m_eReload;
    State m_eState = kCreated;
};

/// The registration of a T, which has `bool loadConfig(const ConfigReader&, EConfig)`. A member of the object it
/// registers.
template <typename T>
class Config final : public ConfigBase
{
public:
    explicit Config(EConfigReload reload) : ConfigBase(reload) {}

    /// Records the object and, when the process has a global reader, loads it from there. The state stays kCreated, so
    /// the framework's first load initialises the object once more. Exceptions of loadConfig pass.
    void initialize(T& object)
    {
        m_pObject = &object;
        if (const Handle<const ConfigReader> reader = globalReader(); !reader.isNull()) {
            object.loadConfig(*reader, kConfigInitialize);
        }
    }

protected:
    // Without a recorded object: an assertion report, and nothing is loaded.
    bool callLoadConfig(const ConfigReader& reader, EConfig mode) override
    {
        VEL_ASSERT_TEXT(m_pObject != nullptr, "m_pObject != 0");
        if (m_pObject == nullptr) {
            return false;
        }
        // The result says nothing to the framework: only an exception is a failure.
        m_pObject->loadConfig(reader, mode);
        return true;
    }

private:
    T* m_pObject = nullptr;
};

}  // namespace vel
