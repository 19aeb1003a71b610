# What an installed webi18n consists of, beside the data pack (datapack/) and the command (cli/): the library, the renderer
# that stands on it, their public headers, and the files by which CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

target_include_directories(webi18n INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(webi18n INTERFACE cxx_std_20)

foreach(library IN ITEMS webi18n webi18n-render)
    install(TARGETS ${library} EXPORT webi18nTargets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endforeach()
install(DIRECTORY include/webi18n DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
install(DIRECTORY render/include/webi18n-render
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
foreach(folder IN ITEMS core log xml messages config transcoding nls)
    install(DIRECTORY platform/${folder}/include/vel
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
endforeach()

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/webi18n")
set(dataFolder "${CMAKE_INSTALL_DATADIR}/webi18n")
configure_package_config_file(cmake/webi18nConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/webi18nConfig.cmake"
    INSTALL_DESTINATION "${packageFolder}"
    PATH_VARS dataFolder)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/webi18nConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(EXPORT webi18nTargets NAMESPACE webi18n:: DESTINATION "${packageFolder}")
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/webi18nConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/webi18nConfigVersion.cmake"
    DESTINATION "${packageFolder}")

# Seen from where the file stands, so that an installed tree can be moved.
file(RELATIVE_PATH prefixFromPkgConfig
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}/")
foreach(library IN ITEMS webi18n webi18n-render)
    configure_file(cmake/${library}.pc.in "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()
