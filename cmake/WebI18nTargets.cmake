# The flags of every target, and the functions by which the folders define theirs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(WEBI18N_CCACHE ccache)
if(WEBI18N_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${WEBI18N_CCACHE}")
endif()

# One place for flags: a sanitised shared library needs the same flags on every program that links it.
add_library(webi18n_flags INTERFACE)
target_compile_options(webi18n_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# Calls within the library are bound there, so the compiler may see through them.
target_compile_options(webi18n_flags INTERFACE -fno-semantic-interposition)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies in every `"literal" + std::string` (its bug 105651, mended in 13).
    target_compile_options(webi18n_flags INTERFACE -Wno-restrict)
endif()
if(WEBI18N_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code hides from GCC that the unused members of a variant are not read; the plain builds watch for it.
    target_compile_options(webi18n_flags INTERFACE -Wno-maybe-uninitialized)
endif()
if(WEBI18N_SANITIZE)
    target_compile_options(webi18n_flags INTERFACE
        -fsanitize=${WEBI18N_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(webi18n_flags INTERFACE -fsanitize=${WEBI18N_SANITIZE})
endif()
include(WebI18nHardening)
if(WEBI18N_LIBFUZZER)
    target_compile_options(webi18n_flags INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(webi18n_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What one folder finds, all folders that link its objects need.
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
find_package(Threads REQUIRED)
include(GoogleTest)

# webi18n_folder(TARGET INCLUDE_DIR SOURCES... [USES targets...])
# An OBJECT library: compiled once, taken by the shared library, the tests of internals and the fuzz targets.
function(webi18n_folder target includeDir)
    cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
    add_library(${target} OBJECT ${arg_SOURCES})
    target_include_directories(${target}
        PUBLIC "${includeDir}"
        PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PUBLIC webi18n_flags ${arg_USES})
endfunction()

# webi18n_version_script(TARGET FILE)
# The symbols that a shared library exports, and their version.
function(webi18n_version_script target file)
    target_link_options(${target} PRIVATE "-Wl,--version-script=${CMAKE_CURRENT_SOURCE_DIR}/${file}")
    set_target_properties(${target} PROPERTIES LINK_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
endfunction()

# webi18n_installed(TARGET SEARCH_PATH)
# A program or shared library that is installed. It stands where an installation has it, so that the search path for its
# libraries is that of an installation from the beginning: CMake would lengthen one that it has to change with colons, and
# the loader takes what is empty between two of them for the working folder.
function(webi18n_installed target searchPath)
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin"
        LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}"
        BUILD_WITH_INSTALL_RPATH ON
        INSTALL_RPATH "${searchPath}")
endfunction()

# webi18n_static_library(TARGET NAME OBJECTS...)
# libNAME.a of one object, so that whoever takes any of it gets what its static initialisers do, as from the shared one.
function(webi18n_static_library target name)
    set(objects "")
    foreach(folder IN LISTS ARGN)
        list(APPEND objects $<TARGET_OBJECTS:${folder}>)
    endforeach()
    set(whole "${CMAKE_CURRENT_BINARY_DIR}/${name}.o")
    add_custom_command(OUTPUT "${whole}"
        COMMAND "${CMAKE_LINKER}" -r -o "${whole}" ${objects}
        DEPENDS ${objects} COMMAND_EXPAND_LISTS VERBATIM)
    add_library(${target} STATIC "${whole}")
    set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} LINKER_LANGUAGE CXX)
    target_compile_features(${target} INTERFACE cxx_std_20)
endfunction()

# Every object folder of the library, for programs that need the internals.
set(WEBI18N_OBJECT_FOLDERS vel_core vel_log vel_xml vel_messages vel_config vel_transcoding vel_nls webi18n_objects)

# webi18n_test(NAME SOURCES... [FOLDERS targets...] [USES targets...] [INCLUDES dirs...] [DEFINES names...] [WHOLE])
# A GoogleTest program on the named object folders; each of its tests becomes a ctest test of its own process, or all
# of them one ctest test with WHOLE (where each would load the same large data again).
function(webi18n_test name)
    cmake_parse_arguments(arg "WHOLE" "" "SOURCES;FOLDERS;USES;INCLUDES;DEFINES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support" ${arg_INCLUDES})
    target_compile_definitions(${name} PRIVATE WEBI18N_SOURCE_DIR="${CMAKE_CURRENT_SOURCE_DIR}" ${arg_DEFINES})
    target_link_libraries(${name} PRIVATE webi18n_flags ${arg_FOLDERS} ${arg_USES} GTest::gmock GTest::gtest_main)
    # The tests themselves need no speed, what they test is optimised as it is shipped.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
    if(arg_WHOLE)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT 900)
    else()
        # Asked for their tests when ctest starts, so that a build needs no program to run; names without values, which
        # may be addresses.
        gtest_discover_tests(${name}
            TEST_PREFIX "${name}." NO_PRETTY_VALUES EXTRA_ARGS --gtest_brief=1
            DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
            PROPERTIES TIMEOUT 600)
    endif()
endfunction()
