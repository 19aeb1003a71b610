#pragma once

#include <exception>
#include <memory>
#include <string>

#include "vel/core/api.h"
#include "vel/core/message.h"

namespace vel {

/// The base of what this system throws: a message with inserts. Copies share the message and do not throw.
class WEBI18N_API Exception : public std::exception
{
public:
    explicit Exception(Message message);
    ~Exception() override;

    const Message& message() const noexcept { return m_tShared->m_tMessage; }
    /// message().toString() as UTF-8.
    const char* what() const noexcept override { return m_tShared->m_sWhat.c_str(); }

private:
    struct Shared
    {
        Message m_tMessage;
        std::string m_sWhat;
    };
    std::shared_ptr<const Shared> m_tShared;
};

/// Thrown where a null Handle is dereferenced. The message names the type that the handle should have held.
class WEBI18N_API InvalidHandleException : public Exception
{
public:
    /// `typeName`: the name as the compiler's type information has it; it is shown in readable form.
    explicit InvalidHandleException(const char* typeName);
    ~InvalidHandleException() override;
};

}  // namespace vel
