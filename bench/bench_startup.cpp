#include <algorithm>

#include "childprocess.h"
#include "rows.h"

// What the library does while it is loaded. A program that does nothing else loads the library, or one without any
// initialiser that depends on the same libraries; the difference of the two is what ours costs: its relocations and its
// static initialisation, so more than the initialisation alone. Each time in a process of its own.

namespace bench {

namespace {

double nanosecondsToLoad(const std::string& library)
{
    return numberPrintedBy(WEBI18N_BENCH_LOADPROBE, {library});
}

}  // namespace

void addStartupRows(std::vector<Situation>& rows)
{
    rows.push_back({"static initialisation of the library", "", {Target::kOursBelow, 1e6}, [] {
                        return Contest{[](std::size_t) {
                                           return std::max(0.0, nanosecondsToLoad(WEBI18N_BENCH_LIBRARY) -
                                                                    nanosecondsToLoad(WEBI18N_BENCH_EMPTY));
                                       },
                                       {},
                                       1};
                    }});
    rows.push_back({"dlopen of the library", "dlopen of an empty one with its dependencies", {}, [] {
                        return Contest{[](std::size_t) { return nanosecondsToLoad(WEBI18N_BENCH_LIBRARY); },
                                       [](std::size_t) { return nanosecondsToLoad(WEBI18N_BENCH_EMPTY); }, 1};
                    }});
}

}  // namespace bench
