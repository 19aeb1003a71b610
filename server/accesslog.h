#pragma once

#include "http.h"

namespace server {

/// Writes one record of a request that was answered: "GET /api/resolve 200 0.000231".
void logAccess(const Served& served);

}  // namespace server
