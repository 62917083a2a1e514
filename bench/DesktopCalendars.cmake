# The calendars of the desktop, from the real Evolution Data Server on a bus and in a home of its own.
if(BUILD_TESTING)
    set(eds_tests ${CMAKE_SOURCE_DIR}/tests/CalendarEds)
    add_library(BenchEdsWorld STATIC ${eds_tests}/EdsWorld.cpp ${eds_tests}/EdsWorld.h)
    target_include_directories(BenchEdsWorld PUBLIC ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(BenchEdsWorld PUBLIC CalendarEds TestSupport PkgConfig::ecal PRIVATE MivoraOptions)
    mivora_bench(
        DesktopCalendars
        DEPENDS Calendar CalendarEds
        LIBRARIES BenchEdsWorld
        SOURCES DesktopCalendars.cpp CalendarSamples.cpp CalendarSamples.h)
    add_dependencies(DesktopCalendars mivora-eds)
    # The same server through its own library alone.
    mivora_bench(LibecalLoading LIBRARIES BenchEdsWorld SOURCES LibecalLoading.cpp)
endif()
