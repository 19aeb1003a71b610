#include "vel/core/exception.h"
#include "vel/core/handle.h"

namespace vel {

RefCounted::~RefCounted() = default;

void handle_details::throwInvalidHandle(const std::type_info& type)
{
    throw InvalidHandleException(type.name());
}

}  // namespace vel
