#include "vel/core/exception.h"

#include <cxxabi.h>

#include <cstdlib>

#include "vel/core/utf8.h"

namespace vel {

namespace {

String readableTypeName(const char* typeName)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> readable(abi::__cxa_demangle(typeName, nullptr, nullptr, &status),
                                                               &std::free);
    const char* shown = status == 0 ? readable.get() : typeName;
    return stringFromUtf8(shown).value_or(String());
}

}  // namespace

Exception::Exception(Message message)
{
    std::string what = toUtf8Lossy(message.toString());
    m_tShared = std::make_shared<const Shared>(Shared{std::move(message), std::move(what)});
}

Exception::~Exception() = default;

InvalidHandleException::InvalidHandleException(const char* typeName)
    : Exception(Message::text(L"Invalid handle: %1").insert(1, readableTypeName(typeName)))
{}

InvalidHandleException::~InvalidHandleException() = default;

}  // namespace vel
