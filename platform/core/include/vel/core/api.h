#pragma once

/// Marks what the shared library exports; everything else is hidden.
#define WEBI18N_API __attribute__((visibility("default")))
