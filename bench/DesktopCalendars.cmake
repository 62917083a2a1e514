# The calendars of the desktop, from the real Evolution Data Server on a bus and in a home of its own.
if(BUILD_TESTING AND TARGET mivora-eds)
    mivora_bench(
        DesktopCalendars
        DEPENDS Calendar CalendarEds
        LIBRARIES TestSupport PkgConfig::ecal
        SOURCES DesktopCalendars.cpp CalendarSamples.cpp CalendarSamples.h)
    add_dependencies(DesktopCalendars mivora-eds)
    # The same server through its own library alone.
    mivora_bench(LibecalLoading LIBRARIES CalendarEds TestSupport PkgConfig::ecal SOURCES LibecalLoading.cpp)
endif()
