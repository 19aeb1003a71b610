# Run by CPack when the packages are made: CPack gives a package with libraries scripts that call ldconfig, which Debian
# has a trigger for (the file beside this), and which need a shell in the system that the package goes into.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    if(package MATCHES "/${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME}_[^/]*$")
        set(folder "${CPACK_TEMPORARY_DIRECTORY}/repack")
        file(REMOVE_RECURSE "${folder}")
        execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${folder}" COMMAND_ERROR_IS_FATAL ANY)
        file(REMOVE "${folder}/DEBIAN/postinst" "${folder}/DEBIAN/postrm")
        execute_process(COMMAND dpkg-deb --root-owner-group --build "${folder}" "${package}"
            OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
        file(REMOVE_RECURSE "${folder}")
    endif()
endforeach()
