mivora_bench(Updates DEPENDS KeloSparkleEngine LIBRARIES PkgConfig::sodium SOURCES Updates.cpp)
