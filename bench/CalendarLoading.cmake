mivora_bench(
    CalendarLoading
    DEPENDS Calendar CalendarFolder
    SOURCES CalendarLoading.cpp CalendarSamples.cpp CalendarSamples.h)
add_executable(make-samples MakeSamples.cpp CalendarSamples.cpp)
target_link_libraries(make-samples PRIVATE Qt6::Core MivoraOptions)
add_dependencies(CalendarLoading make-samples)
