# The Debian package: `cpack -G DEB`, see scripts/package.
install(FILES deb/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/mivora)
install_compressed(${CMAKE_CURRENT_SOURCE_DIR}/deb/changelog changelog ${CMAKE_INSTALL_DATADIR}/doc/mivora)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mivora)
set(CPACK_PACKAGE_VENDOR Kelo)
set(CPACK_PACKAGE_CONTACT "Kelo <mivora@kelo.app>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
# Files that name their own place are written for where the package puts them.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${MIVORA_MAKER_PAGE})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "countdown to your next meeting, and the way into it")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Mivora sits in the status tray. It reads your calendars on your own machine,
shows a countdown to the next meeting, and floats a small panel a moment
before it starts: Join, Snooze, Dismiss.

It finds the join links of Zoom, Google Meet, Teams, Webex and FaceTime, or
any other https link, and opens them in the service's own app where that is
installed. It stores nothing about meetings.")

# Libraries are found by what the program and its plug-ins link; QML modules and the window system's plug-ins are only
# loaded.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtqml-workerscript, qml6-module-qtquick, qml6-module-qtquick-templates, qt6-qpa-plugins, \
default-dbus-session-bus | dbus-session-bus, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "evolution-data-server, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gnome-shell-extension-appindicator, qt6-translations-l10n, vdirsyncer, wl-clipboard")
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/deb/finish.cmake)
include(CPack)
