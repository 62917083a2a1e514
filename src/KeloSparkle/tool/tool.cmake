# The maintainer's side of an update: it is built here but not installed.
find_package(CLI11 REQUIRED)
add_executable(mivora-appcast tool/AppcastTool.cpp tool/AppcastItemWriter.cpp tool/AppcastItemWriter.h tool/SigningKey.cpp
                              tool/SigningKey.h)
target_include_directories(mivora-appcast PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_link_libraries(mivora-appcast PRIVATE Qt6::Core CLI11::CLI11 PkgConfig::sodium MivoraOptions)
