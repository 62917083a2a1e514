# What is measured from outside, on a started program.
add_library(BenchStartedProgram STATIC StartedProgram.cpp)
target_include_directories(BenchStartedProgram PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(BenchStartedProgram PUBLIC TestSupport Qt6::DBus PRIVATE MivoraOptions)

# The program in the tray beside the least one that shows an item there.
mivora_bench(Tray LIBRARIES BenchStartedProgram SOURCES Tray.cpp CalendarSamples.cpp)
add_executable(bare-tray-item BareTrayItem.cpp)
target_link_libraries(bare-tray-item PRIVATE Qt6::Gui Qt6::DBus MivoraOptions)
add_dependencies(Tray mivora mivora-views bare-tray-item)
