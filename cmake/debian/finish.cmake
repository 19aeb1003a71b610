# Run by CPack between installing and packing: what Debian wants of every package beside what an installation elsewhere has.
set(names_runtime "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME}")
set(names_development "${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME}")
set(names_tools "${CPACK_DEBIAN_TOOLS_PACKAGE_NAME}")
set(names_data "${CPACK_DEBIAN_DATA_PACKAGE_NAME}")
set(names_documents "${CPACK_DEBIAN_DOCUMENTS_PACKAGE_NAME}")

function(run_gzip)
    execute_process(COMMAND gzip -9nf ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}")
    if(NOT IS_DIRECTORY "${root}")
        message(FATAL_ERROR "component ${component} is not installed in ${root}")
    endif()
    set(documents "${root}/share/doc/${names_${component}}")
    file(MAKE_DIRECTORY "${documents}")
    configure_file("${CMAKE_CURRENT_LIST_DIR}/copyright" "${documents}/copyright" COPYONLY)
    if(component STREQUAL "data" AND EXISTS /usr/share/doc/libicu-dev/copyright)
        # The data is ICU's: its licence goes along.
        file(READ /usr/share/doc/libicu-dev/copyright licence)
        file(APPEND "${documents}/copyright" "\n${licence}")
    endif()
    configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog" "${documents}/changelog" COPYONLY)
    run_gzip("${documents}/changelog")
    file(GLOB manuals "${root}/share/man/man*/*.[1-9]")
    if(manuals)
        run_gzip(${manuals})
    endif()
    file(CHMOD_RECURSE "${documents}"
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
        DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endforeach()
