target_sources(
    Calendar
    PRIVATE desktop/DesktopCalendars.h
            desktop/DesktopEvents.cpp
            desktop/DesktopEvents.h
            desktop/DesktopLoader.cpp
            desktop/DesktopLoader.h
            desktop/DesktopService.cpp
            desktop/DesktopService.h
            desktop/DesktopStore.cpp
            desktop/DesktopStore.h)
