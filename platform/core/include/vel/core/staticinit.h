#pragma once

// Static data of the library must be usable from every static initialiser of a program, in whatever order its object
// files are linked. Objects with a priority are built before all objects without one, in rising order of priority.

/// Tables that need nothing else.
#define VEL_INIT_TABLES [[gnu::init_priority(1001)]]
/// Values built from the tables.
#define VEL_INIT_VALUES [[gnu::init_priority(1002)]]
