mivora_bench(
    PanelBench
    DEPENDS JoinPanel PlatformFake
    LIBRARIES TestSupport PkgConfig::xcb
    SOURCES Panel.cpp)
target_include_directories(PanelBench PRIVATE ${CMAKE_SOURCE_DIR}/tests)
add_executable(bare-qml-window BareQmlWindow.cpp)
target_link_libraries(bare-qml-window PRIVATE Qt6::Quick MivoraOptions)
add_dependencies(PanelBench mivora-views bare-qml-window)
