# What CPack can't be told is put right in the package that it has made.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(content ${CPACK_TEMPORARY_DIRECTORY}-finished)
    file(REMOVE_RECURSE ${content})
    execute_process(COMMAND dpkg-deb -R ${package} ${content} COMMAND_ERROR_IS_FATAL ANY)

    # Plug-ins are no libraries that the linker's cache should know: there is nothing for these scripts to do.
    file(REMOVE ${content}/DEBIAN/postinst ${content}/DEBIAN/postrm)

    # Only the plug-in for Evolution's calendars needs Evolution's libraries, and the program does without it.
    file(STRINGS ${content}/DEBIAN/control lines)
    set(control "")
    set(evolution "")
    foreach(line IN LISTS lines)
        if(line MATCHES "^Depends: (.*)")
            string(REPLACE ", " ";" depends "${CMAKE_MATCH_1}")
            set(evolution ${depends})
            list(FILTER evolution INCLUDE REGEX "^lib(ecal|edataserver|camel|ebackend)-")
            list(REMOVE_ITEM depends ${evolution})
            list(JOIN depends ", " depends)
            set(line "Depends: ${depends}")
        elseif(line MATCHES "^Recommends: ")
            list(PREPEND evolution ${line})
            list(JOIN evolution ", " line)
        endif()
        string(APPEND control "${line}\n")
    endforeach()
    file(WRITE ${content}/DEBIAN/control "${control}")

    execute_process(COMMAND dpkg-deb --root-owner-group -b ${content} ${package} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
