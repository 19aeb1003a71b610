# The compiler of the presets `clang` and `fuzz`: clang from 14 up. The one that the checks are run with on their own system
# goes first, then the system's, then whichever is there; -DCMAKE_CXX_COMPILER=... names another.
set(names clang++-14 clang++)
foreach(version RANGE 40 15 -1)
    list(APPEND names clang++-${version})
endforeach()
find_program(CMAKE_CXX_COMPILER NAMES ${names} REQUIRED)
