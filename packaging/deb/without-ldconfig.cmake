# CPack takes plug-ins for libraries that the linker's cache should know, and adds scripts that only refresh it.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(content ${CPACK_TEMPORARY_DIRECTORY}-repacked)
    file(REMOVE_RECURSE ${content})
    execute_process(COMMAND dpkg-deb -R ${package} ${content} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${content}/DEBIAN/postinst ${content}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group -b ${content} ${package}
                    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
