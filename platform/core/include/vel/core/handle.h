#pragma once

// Handles, and the exception that a null one throws. What the exception itself is made of includes refcounted.h alone.

#include "vel/core/exception.h"
#include "vel/core/refcounted.h"
