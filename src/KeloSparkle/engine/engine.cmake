# What needs the network, libsodium and libxml2 is in a plug-in, loaded with the first check.
pkg_check_modules(libxml REQUIRED IMPORTED_TARGET libxml-2.0)
pkg_check_modules(sodium REQUIRED IMPORTED_TARGET GLOBAL libsodium)

mivora_module(
    KeloSparkleEngine LAYER 3
    FOLDER ${CMAKE_CURRENT_SOURCE_DIR}
    DEPENDS KeloSparkle
    LIBRARIES Qt6::Gui Qt6::Network
    PRIVATE_LIBRARIES PkgConfig::libxml PkgConfig::sodium
    SOURCES engine/Appcast.cpp
            engine/Appcast.h
            engine/Aside.h
            engine/DebianPackage.cpp
            engine/DebianPackage.h
            engine/HttpsFetch.cpp
            engine/HttpsFetch.h
            engine/NetworkUpdateEngine.cpp
            engine/NetworkUpdateEngine.h
            engine/NotesText.cpp
            engine/NotesText.h
            engine/PackageDownload.cpp
            engine/PackageDownload.h
            engine/Signature.cpp
            engine/Signature.h
            engine/UpdateChoice.cpp
            engine/UpdateChoice.h
            engine/Version.cpp
            engine/Version.h)

mivora_plugin(mivora-updates LIBRARIES KeloSparkleEngine SOURCES engine/UpdatesPlugin.cpp engine/UpdatesPlugin.h)
