# The views: static QML modules that are linked into one plug-in, which the program loads when it first has
# something to show. The program itself never links Qt Quick.
include_guard()

find_package(Qt6 6.4 REQUIRED COMPONENTS Qml Quick Svg)

# mivora_qml_module(NAME [DEPENDS …Views] QML_FILES files… [SINGLETONS files…] [RESOURCES files…])
#
# Declares the QML module NAME ("import NAME") of the current folder and adds it to the plug-in. DEPENDS names the
# QML modules that its files import. Models come in as properties: a QML module links no module of ours.
function(mivora_qml_module name)
    cmake_parse_arguments(arg "" "" "DEPENDS;QML_FILES;SINGLETONS;RESOURCES" ${ARGN})
    set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    # Sanitizers gain nothing from compiled QML, and building it takes long.
    set(compile_qml "")
    if(MIVORA_SANITIZE)
        set(compile_qml NO_CACHEGEN)
    endif()
    qt_add_qml_module(
        ${name}
        STATIC
        ${compile_qml}
        URI ${name}
        VERSION 1.0
        RESOURCE_PREFIX /
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${name}
        DEPENDENCIES QtQuick
        QML_FILES ${arg_QML_FILES} ${arg_SINGLETONS}
        RESOURCES ${arg_RESOURCES})
    target_link_libraries(${name} PRIVATE Qt6::Quick ${arg_DEPENDS})
    set_property(GLOBAL APPEND PROPERTY MIVORA_QML_MODULES ${name})
endfunction()

# mivora_views(NAME SOURCES files… [RESOURCES files…]): the plug-in with every QML module declared so far.
function(mivora_views name)
    cmake_parse_arguments(arg "" "" "DEPENDS;SOURCES" ${ARGN})
    get_property(modules GLOBAL PROPERTY MIVORA_QML_MODULES)
    set(imports "#include <QtQml/qqmlextensionplugin.h>\n\n")
    foreach(module IN LISTS modules)
        string(APPEND imports "Q_IMPORT_QML_PLUGIN(${module}Plugin)\n")
    endforeach()
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/QmlModules.cpp CONTENT "${imports}")
    list(TRANSFORM modules APPEND plugin OUTPUT_VARIABLE plugins)
    mivora_plugin(
        ${name}
        LIBRARIES Qt6::Quick Qt6::Svg ${modules} ${plugins}
        SOURCES ${arg_SOURCES} ${CMAKE_CURRENT_BINARY_DIR}/QmlModules.cpp)
endfunction()
