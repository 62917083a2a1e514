# The calendars of the desktop, from the real Evolution Data Server on a bus and in a home of its own.
set(eds_tests ${CMAKE_SOURCE_DIR}/tests/CalendarEds)
if(BUILD_TESTING)
    mivora_bench(
        DesktopCalendars
        DEPENDS Calendar
        LIBRARIES TestSupport
        SOURCES DesktopCalendars.cpp
                CalendarSamples.cpp
                CalendarSamples.h
                ${eds_tests}/EdsMaker.cpp
                ${eds_tests}/EdsMaker.h
                ${eds_tests}/EdsWorld.cpp
                ${eds_tests}/EdsWorld.h)
    target_include_directories(DesktopCalendars PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    add_dependencies(DesktopCalendars eds-maker mivora-eds)
endif()
