#pragma once

namespace testsupport {

/// Replaces what every operator new of the calling thread calls first; null calls nothing. The watch may not allocate.
void setAllocationWatch(void (*watch)()) noexcept;

}  // namespace testsupport
