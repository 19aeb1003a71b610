# What an installed webi18n consists of, beside the data pack (datapack/) and the command (cli/): the library, the renderer
# that stands on it, their public headers, and the files by which CMake and pkg-config find them. Each file belongs to a
# component: runtime, development, tools, data or documents.
include(CMakePackageConfigHelpers)

target_include_directories(webi18n INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(webi18n INTERFACE cxx_std_20)

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/webi18n")
set(dataFolder "${CMAKE_INSTALL_DATADIR}/webi18n")

install(TARGETS webi18n webi18n-render EXPORT webi18nTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development)
install(EXPORT webi18nTargets NAMESPACE webi18n:: DESTINATION "${packageFolder}" COMPONENT development)
if(WEBI18N_STATIC)
    install(TARGETS webi18n-static webi18n-render-static EXPORT webi18nStaticTargets
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
    install(EXPORT webi18nStaticTargets NAMESPACE webi18n:: DESTINATION "${packageFolder}" COMPONENT development)
endif()

set(headerFolders include/webi18n render/include/webi18n-render)
foreach(folder IN ITEMS core log xml messages config transcoding nls)
    list(APPEND headerFolders platform/${folder}/include/vel)
endforeach()
install(DIRECTORY ${headerFolders} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
    FILES_MATCHING PATTERN "*.h")

configure_package_config_file(cmake/webi18nConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/webi18nConfig.cmake"
    INSTALL_DESTINATION "${packageFolder}"
    PATH_VARS dataFolder)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/webi18nConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/webi18nConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/webi18nConfigVersion.cmake"
    DESTINATION "${packageFolder}" COMPONENT development)

# Seen from where the file stands, so that an installed tree can be moved.
file(RELATIVE_PATH prefixFromPkgConfig
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}/")
# What a program links beside the static library. Not as Requires.private: pkg-config looks those packages up for every
# program that asks for the flags, also for one that links the shared library and needs none of them.
set(staticLibraries "")
if(WEBI18N_STATIC)
    set(staticLibraries "Libs.private: -lexpat -licui18n -licuuc -licudata -lstdc++ -ldl -lpthread -lm")
endif()
foreach(library IN ITEMS webi18n webi18n-render)
    configure_file(cmake/${library}.pc.in "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endforeach()

install(FILES webi18n/libwebi18n.3 DESTINATION "${CMAKE_INSTALL_MANDIR}/man3" COMPONENT development)

# In the folders of the repository, so that the links from one document to another hold.
install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documents)
install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT documents FILES_MATCHING PATTERN "*.md")
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documents
    PATTERN "CMakeLists.txt" EXCLUDE PATTERN "*.sh" EXCLUDE)

if(WEBI18N_REFERENCE)
    find_program(WEBI18N_DOXYGEN doxygen REQUIRED)
    # As docs/Doxyfile says, but into this build folder.
    set(referenceFolder "${CMAKE_BINARY_DIR}/reference")
    file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/Doxyfile"
        CONTENT "@INCLUDE = docs/Doxyfile\nOUTPUT_DIRECTORY = \"${referenceFolder}\"\n" @ONLY)
    add_custom_target(reference ALL
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${referenceFolder}"
        COMMAND "${WEBI18N_DOXYGEN}" "${CMAKE_BINARY_DIR}/Doxyfile"
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        COMMENT "Building the reference of the headers"
        VERBATIM)
    install(DIRECTORY "${referenceFolder}/html" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documents)
endif()
