# Looking for links, against the fastest regular-expression library around. Without it there is nothing to compare.
pkg_check_modules(PCRE2 QUIET IMPORTED_TARGET libpcre2-8)
if(PCRE2_FOUND)
    mivora_bench(LinkScanning DEPENDS Meetings LIBRARIES PkgConfig::PCRE2 SOURCES LinkScanning.cpp)
endif()
