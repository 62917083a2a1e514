# Windows, beside the least program that shows one.
add_library(BenchBareWindow STATIC BareWindow.cpp BareWindow.h)
target_link_libraries(BenchBareWindow PUBLIC Qt6::Core PRIVATE MivoraOptions)
target_include_directories(BenchBareWindow PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
add_executable(bare-qml-window BareQmlWindow.cpp)
target_link_libraries(bare-qml-window PRIVATE Qt6::Quick MivoraOptions)
mivora_bench(
    PanelBench
    DEPENDS JoinPanel TestSupport
    LIBRARIES BenchBareWindow TestSupport PkgConfig::xcb
    SOURCES Panel.cpp)
target_include_directories(PanelBench PRIVATE ${CMAKE_SOURCE_DIR}/tests)
add_dependencies(PanelBench mivora-views bare-qml-window)
