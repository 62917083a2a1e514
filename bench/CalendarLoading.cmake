mivora_bench(
    CalendarLoading
    DEPENDS Calendar
    SOURCES CalendarLoading.cpp CalendarSamples.cpp CalendarSamples.h)
