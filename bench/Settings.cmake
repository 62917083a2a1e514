# How long the settings window takes to be seen, the first time and later. Loads the plug-in of the build tree.
find_package(Qt6 REQUIRED COMPONENTS Test)
mivora_bench(
    SettingsOpening
    DEPENDS Settings TestSupport
    LIBRARIES BenchBareWindow TestSupport Qt6::Test
    SOURCES SettingsOpening.cpp)
target_include_directories(SettingsOpening PRIVATE ${CMAKE_SOURCE_DIR}/tests)
add_dependencies(SettingsOpening mivora-views bare-qml-window)
