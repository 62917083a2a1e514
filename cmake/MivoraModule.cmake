# One CMake target per module, each with a layer. A module may only depend on modules of lower layers,
# and sees only the headers of modules that it depends on: both are checked here, by the build itself.
include_guard()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(MIVORA_CCACHE ccache)
if(MIVORA_CCACHE)
    # ccache caches nothing that reads a precompiled header unless it is told that this is fine.
    set(launcher env CCACHE_SLOPPINESS=pch_defines,time_macros ${MIVORA_CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

# What ./test builds of the tests, by their labels: the checks that docs/testing.md tells of.
foreach(label unit threads program desktop fuzz)
    add_custom_target(${label}_tests)
endforeach()

# What the sanitizers are told when a test runs. Of windows' leaks Qt's own few are known by their whole stacks, which are
# slow to take, the more so the longer they are. What Clang 14 notes of the thread-local storage of plug-ins can be wrong
# in the main thread, and the search for leaks then crashes on it.
set(sanitized_environment TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/races.supp:halt_on_error=1
                          LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0)
set(sanitized_window_environment
    ${sanitized_environment} ASAN_OPTIONS=fast_unwind_on_malloc=0:malloc_context_size=16:intercept_tls_get_addr=0)

# Settings that every target of ours is compiled and linked with.
add_library(MivoraOptions INTERFACE)
# -pthread everywhere: GLib's users need it, and sources that share a precompiled header must agree on it.
# Position independent in one way: a precompiled header for -fPIC is none for -fPIE.
target_compile_options(MivoraOptions INTERFACE -Wall -Wextra -pthread -fPIC $<$<CXX_COMPILER_ID:GNU>:-Wno-error=invalid-pch>)
# Clang compares times, which are others after ccache or a checkout has made a file anew.
target_compile_options(MivoraOptions INTERFACE "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
target_compile_definitions(
    MivoraOptions INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
                            QT_USE_QSTRINGBUILDER QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
if(MIVORA_SANITIZE)
    target_compile_options(MivoraOptions INTERFACE -fsanitize=${MIVORA_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
    target_link_options(MivoraOptions INTERFACE -fsanitize=${MIVORA_SANITIZE})
endif()

# Precompiled headers, for sources that see Qt Core: they more than halve the time of a build.
option(MIVORA_PCH "Use precompiled headers" ON)
function(_mivora_declare_pch name)
    file(WRITE ${CMAKE_BINARY_DIR}/pch/${name}.cpp "")
    add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/pch/${name}.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE Qt6::Core MivoraOptions)
    target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()
function(_mivora_use_pch target pch)
    if(MIVORA_PCH)
        target_precompile_headers(${target} REUSE_FROM ${pch})
    endif()
endfunction()

# Makes the folder's headers visible as "NAME/…" to those that link the target, and to nobody else.
function(_mivora_expose_headers target folder)
    set(root ${CMAKE_BINARY_DIR}/headers/${target})
    file(MAKE_DIRECTORY ${root})
    get_filename_component(name ${folder} NAME)
    file(CREATE_LINK ${folder} ${root}/${name} SYMBOLIC)
    target_include_directories(${target} PUBLIC ${root})
endfunction()

function(_mivora_check_layer name layer)
    foreach(dependency IN LISTS ARGN)
        if(NOT TARGET ${dependency})
            message(FATAL_ERROR "${name} depends on ${dependency}, which is no module declared before it")
        endif()
        get_target_property(below ${dependency} MIVORA_LAYER)
        if(NOT below LESS layer)
            message(FATAL_ERROR "${name} (layer ${layer}) may not depend on ${dependency} (layer ${below})")
        endif()
    endforeach()
endfunction()

# mivora_module(NAME LAYER n [DEPENDS modules…] [LIBRARIES public…] [PRIVATE_LIBRARIES …] SOURCES files…)
#
# Declares the static library NAME of the current folder. DEPENDS names modules of lower layers. FOLDER gives
# another folder for the headers than the current one. WITHOUT_QT is for modules that don't even see Qt Core.
function(mivora_module name)
    cmake_parse_arguments(arg "WITHOUT_QT" "LAYER;FOLDER" "DEPENDS;LIBRARIES;PRIVATE_LIBRARIES;SOURCES" ${ARGN})
    _mivora_check_layer(${name} ${arg_LAYER} ${arg_DEPENDS})
    add_library(${name} STATIC ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES MIVORA_LAYER ${arg_LAYER})
    if(NOT arg_FOLDER)
        set(arg_FOLDER ${CMAKE_CURRENT_SOURCE_DIR})
    endif()
    _mivora_expose_headers(${name} ${arg_FOLDER})
    target_link_libraries(${name} PUBLIC ${arg_DEPENDS} ${arg_LIBRARIES}
                                  PRIVATE MivoraOptions ${arg_PRIVATE_LIBRARIES})
    if(NOT arg_WITHOUT_QT)
        _mivora_use_pch(${name} MivoraPch)
    endif()
endfunction()

# mivora_plugin(NAME [LIBRARIES …] SOURCES files…): a plug-in that kelo::PluginFile finds, here and when it is
# installed to ${CMAKE_INSTALL_LIBDIR}/mivora.
function(mivora_plugin name)
    cmake_parse_arguments(arg "" "" "LIBRARIES;SOURCES" ${ARGN})
    add_library(${name} MODULE ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES PREFIX "")
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} MivoraOptions)
endfunction()

# mivora_test(NAME DEPENDS modules… [LABELS …] [TIMEOUT s] [GUI] [NO_MAIN] [VIEWS] SOURCES files…)
#
# One GoogleTest program, run by ctest. GUI runs it with a QGuiApplication on the offscreen platform; VIEWS says that it
# opens windows of Qt Quick, which leave known leaks behind.
function(mivora_test name)
    cmake_parse_arguments(arg "GUI;NO_MAIN;VIEWS" "TIMEOUT" "DEPENDS;LIBRARIES;LABELS;SOURCES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} ${arg_LIBRARIES} MivoraOptions GTest::gmock)
    if(arg_NO_MAIN)
    elseif(arg_GUI)
        target_link_libraries(${name} PRIVATE TestGuiMain)
    else()
        target_link_libraries(${name} PRIVATE TestMain)
    endif()
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    _mivora_use_pch(${name} MivoraTestPch)
    target_compile_definitions(${name} PRIVATE MIVORA_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    if(NOT arg_LABELS)
        set(arg_LABELS unit)
    endif()
    foreach(label IN LISTS arg_LABELS)
        add_dependencies(${label}_tests ${name})
    endforeach()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}")
    if(MIVORA_SANITIZE)
        set(environment ${sanitized_environment})
        if(arg_VIEWS)
            set(environment ${sanitized_window_environment})
        endif()
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 600)
    endif()
endfunction()

# mivora_fuzz(NAME DEPENDS modules… CORPUS folder SOURCES files…)
#
# A libFuzzer target with its seed corpus; ctest gives it a few seconds, a person as long as wanted.
function(mivora_fuzz name)
    if(NOT MIVORA_FUZZ)
        return()
    endif()
    cmake_parse_arguments(arg "" "CORPUS" "DEPENDS;LIBRARIES;SOURCES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} ${arg_LIBRARIES} MivoraOptions)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzz_tests ${name})
    set(found ${CMAKE_BINARY_DIR}/corpus/${name})
    file(MAKE_DIRECTORY ${found})
    add_test(NAME ${name} COMMAND ${name} -max_total_time=5 -timeout=10 -rss_limit_mb=2048 ${found}
                                  ${CMAKE_CURRENT_SOURCE_DIR}/${arg_CORPUS})
    set_tests_properties(${name} PROPERTIES TIMEOUT 120 LABELS fuzz)
endfunction()
