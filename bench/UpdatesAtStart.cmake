# What the program pays for updates before anybody asks for one: it is started with and without an update feed.
mivora_bench(UpdatesAtStart LIBRARIES TestSupport Qt6::DBus SOURCES UpdatesAtStart.cpp)
target_include_directories(UpdatesAtStart PRIVATE ${CMAKE_SOURCE_DIR}/tests)
add_dependencies(UpdatesAtStart mivora mivora-updates mivora-views)
