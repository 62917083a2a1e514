# A build that is given a feed looks for updates itself; others leave them to a package manager (docs/releasing.md).
set(MIVORA_PROJECT_PAGE "https://kelo.app/mivora" CACHE STRING "The program's page; changes/, issues/ and images/ are below it")
set(MIVORA_UPDATE_FEED "" CACHE STRING "The https address of the update feed; empty for a build without updates")
set(MIVORA_UPDATE_KEY "" CACHE STRING "The public key (base64, Ed25519) that the feed is signed for")

target_sources(App PRIVATE MakeUpdater.cpp MakeUpdater.h)
target_link_libraries(App PUBLIC KeloUpdates)
target_compile_definitions(App PRIVATE MIVORA_CHANGELOG_PAGE="${MIVORA_PROJECT_PAGE}/changes")
if(MIVORA_UPDATE_FEED)
    add_dependencies(App mivora-updates)
    install(TARGETS mivora-updates DESTINATION ${CMAKE_INSTALL_LIBDIR}/mivora)
    configure_file(info.json.in info.json @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/info.json DESTINATION ${CMAKE_INSTALL_DATADIR}/mivora)
endif()
