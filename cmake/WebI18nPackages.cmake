# Debian packages, one a component, by CPack. The preset `package` has the options that fit: the prefix /usr and with it
# Debian's library folder, no search path in the command, the reference built. `scripts/package` runs it all.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME webi18n)
set(CPACK_PACKAGE_VENDOR webi18n)
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_COMPONENTS_ALL runtime development tools data documents)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
# What Debian wants beside the installed files.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/finish.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/repack.cmake")

set(WEBI18N_PACKAGE_MAINTAINER "webi18n maintainers <maintainers@webi18n.example>" CACHE STRING
    "who maintains the Debian packages: a name and an address between angle brackets")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${WEBI18N_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE webi18n)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# A program that links the library depends on a version that has all of its symbols: the one it was linked with or a later.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Our own library is found here; who needs it says so below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")

# webi18n_package(COMPONENT NAME SECTION SUMMARY TEXT [FIELD value]...)
# The text's lines are cut as Debian cuts them, below 80 columns.
macro(webi18n_package component name section summary text)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}")
    cmake_parse_arguments(field "" "ARCHITECTURE;DEPENDS;RECOMMENDS;SUGGESTS;SHLIBDEPS" "" ${ARGN})
    foreach(each IN ITEMS ARCHITECTURE DEPENDS RECOMMENDS SUGGESTS SHLIBDEPS)
        if(field_${each})
            set(CPACK_DEBIAN_${upper}_PACKAGE_${each} "${field_${each}}")
        endif()
    endforeach()
endmacro()

set(runtimePackage libwebi18n${PROJECT_VERSION_MAJOR})
set(same "(= ${PROJECT_VERSION})")
webi18n_package(runtime ${runtimePackage} libs
    "internationalisation of web servers - shared libraries"
    "Locale definitions from XML files, the mapping of browsers' headers to
locales, users' overrides, currencies, typed dates, character sets and
linguistic order, for servers that serve many locales at once.
Beside it the library that renders dates, numbers and amounts."
    SHLIBDEPS ON SUGGESTS "webi18n-data ${same}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/debian/triggers")
webi18n_package(development libwebi18n-dev libdevel
    "internationalisation of web servers - development files"
    "Headers, static libraries, and the files by which CMake and pkg-config
find the library and the one that renders."
    DEPENDS "${runtimePackage} ${same}" RECOMMENDS "webi18n-data ${same}"
    SUGGESTS "libexpat1-dev, libicu-dev, webi18n-doc ${same}")
webi18n_package(tools webi18n utils
    "internationalisation of web servers - command for administrators"
    "Shows which locale a browser gets and why, what a locale or a currency
holds, how a typed date is read and how lines are sorted, and checks the
XML files that an administrator writes."
    SHLIBDEPS ON DEPENDS "${runtimePackage} ${same}, webi18n-data ${same}")
webi18n_package(data webi18n-data localization
    "internationalisation of web servers - data pack"
    "Locale definitions, mapping rules, currencies, character sets and
messages for every locale that ICU knows."
    ARCHITECTURE all)
webi18n_package(documents webi18n-doc doc
    "internationalisation of web servers - documents"
    "The guides, the reference of the headers, and example programs."
    ARCHITECTURE all)

include(CPack)
