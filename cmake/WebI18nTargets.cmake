# The flags of every target, and the functions by which the folders define theirs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
# An installed program finds the library beside its own folder, wherever the tree was moved to.
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

find_program(WEBI18N_CCACHE ccache)
if(WEBI18N_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${WEBI18N_CCACHE}")
endif()

# One place for flags: a sanitised shared library needs the same flags on every program that links it.
add_library(webi18n_flags INTERFACE)
target_compile_options(webi18n_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies in every `"literal" + std::string` (its bug 105651, mended in 13).
    target_compile_options(webi18n_flags INTERFACE -Wno-restrict)
endif()
if(WEBI18N_SANITIZE)
    target_compile_options(webi18n_flags INTERFACE
        -fsanitize=${WEBI18N_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(webi18n_flags INTERFACE -fsanitize=${WEBI18N_SANITIZE})
endif()
if(WEBI18N_LIBFUZZER)
    target_compile_options(webi18n_flags INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(webi18n_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What one folder finds, all folders that link its objects need.
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
find_package(Threads REQUIRED)
include(GoogleTest)

# Adds a folder of the tree that may not be there yet.
macro(webi18n_add_folder folder)
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt")
        add_subdirectory(${folder})
    else()
        message(STATUS "no ${folder} yet")
    endif()
endmacro()

# Keeps the files of a list that exist: a folder can be built while its last files are still being written.
function(webi18n_existing_sources result)
    set(found "")
    foreach(source IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" OUTPUT_VARIABLE path)
        if(EXISTS "${path}")
            list(APPEND found "${source}")
        else()
            message(STATUS "no ${path} yet")
        endif()
    endforeach()
    set(${result} "${found}" PARENT_SCOPE)
endfunction()

# webi18n_folder(TARGET INCLUDE_DIR SOURCES... [USES targets...])
# An OBJECT library: compiled once, taken by the shared library, the tests of internals and the fuzz targets.
function(webi18n_folder target includeDir)
    cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
    webi18n_existing_sources(sources ${arg_SOURCES})
    if(NOT sources)
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE "${includeDir}")
        target_link_libraries(${target} INTERFACE webi18n_flags ${arg_USES})
        return()
    endif()
    add_library(${target} OBJECT ${sources})
    target_include_directories(${target}
        PUBLIC "${includeDir}"
        PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PUBLIC webi18n_flags ${arg_USES})
endfunction()

# Every object folder of the library, for programs that need the internals.
set(WEBI18N_OBJECT_FOLDERS vel_core vel_log vel_xml vel_messages vel_config webi18n_objects)

# webi18n_test(NAME SOURCES... [FOLDERS targets...] [USES targets...] [INCLUDES dirs...] [DEFINES names...] [WHOLE])
# A GoogleTest program on the named object folders; each of its tests becomes a ctest test of its own process, or all
# of them one ctest test with WHOLE (where each would load the same large data again).
function(webi18n_test name)
    cmake_parse_arguments(arg "WHOLE" "" "SOURCES;FOLDERS;USES;INCLUDES;DEFINES" ${ARGN})
    webi18n_existing_sources(sources ${arg_SOURCES})
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support" ${arg_INCLUDES})
    target_compile_definitions(${name} PRIVATE WEBI18N_SOURCE_DIR="${CMAKE_CURRENT_SOURCE_DIR}" ${arg_DEFINES})
    target_link_libraries(${name} PRIVATE webi18n_flags ${arg_FOLDERS} ${arg_USES} GTest::gmock GTest::gtest_main)
    if(arg_WHOLE)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT 900)
    else()
        gtest_discover_tests(${name} NO_PRETTY_VALUES EXTRA_ARGS --gtest_brief=1 TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
            DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600)
    endif()
endfunction()
