# SPDX-License-Identifier: Apache-2.0
# One function per kind of target, and the compile options that all of them share.

add_library(nuv_options INTERFACE)
target_compile_features(nuv_options INTERFACE cxx_std_20 c_std_11)
# Log records and assertions name a file from the root of the repository. A compiler cache may hand the
# compiler relative paths.
cmake_path(RELATIVE_PATH PROJECT_SOURCE_DIR BASE_DIRECTORY "${CMAKE_BINARY_DIR}"
           OUTPUT_VARIABLE relative_root)
target_compile_options(nuv_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
    -ffile-prefix-map=${relative_root}/=)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Without it a folder with a file whose number has more than 32 bits cannot be read.
    target_compile_definitions(nuv_options INTERFACE _FILE_OFFSET_BITS=64)
endif()
target_include_directories(nuv_options INTERFACE "${PROJECT_SOURCE_DIR}")
if(NOT BUILD_SHARED_LIBS)
    # A static program holds the functions that it calls, not the files that they stand in.
    target_compile_options(nuv_options INTERFACE -ffunction-sections -fdata-sections)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
if(NUV_SANITIZE)
    add_compile_options(-fsanitize=${NUV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${NUV_SANITIZE})
endif()
if(NUV_BUILD_FUZZERS)
    # The library tells the fuzzer which branches an input took.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Tests run once or twice: their own code is compiled quickly rather than well.
add_library(nuv_test_options INTERFACE)
target_compile_options(nuv_test_options INTERFACE $<$<CONFIG:Release>:-O1>
    # At -O1, g++ 12 reports sums of std::string and regular expressions that are sound.
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-array-bounds;-Wno-stringop-overflow;-Wno-maybe-uninitialized>")

# Precompiled headers save half of the compilers' time. Each source names what it needs all the same: the
# clang preset builds without them. Programs have headers of their own, because they are compiled as
# such (-fPIE), libraries as parts of shared objects (-fPIC).
set(standard_headers <algorithm> <array> <bitset> <charconv> <chrono> <cstdint> <functional>
    <initializer_list> <iomanip> <istream> <limits> <map> <memory> <optional> <ostream> <set> <span>
    <sstream> <stdexcept> <string> <string_view> <type_traits> <utility> <variant> <vector>)
function(nuv_precompile name)
    add_library(${name} OBJECT "${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp")
    target_link_libraries(${name} PRIVATE nuv_options)
    target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()
nuv_precompile(nuv_library_headers ${standard_headers})

# nuv_library(NAME [SOURCE...]): an installed library, shared or static as BUILD_SHARED_LIBS says. Its
# soname follows the ABI rule of include/nuv/version.hpp.
set(NUV_ABI ${PROJECT_VERSION_MAJOR})
if(NUV_ABI EQUAL 0)
    string(APPEND NUV_ABI .${PROJECT_VERSION_MINOR})
endif()
function(nuv_library name)
    add_library(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:nuv_options>)
    if(ARGN)
        target_precompile_headers(${name} REUSE_FROM nuv_library_headers)
    endif()
    set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${NUV_ABI})
endfunction()

# The sources of a folder are its .cpp files: a file that is there is built.
function(nuv_sources variable)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${ARGN})
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# nuv_test(NAME SOURCES... [LIBRARIES...] [LABELS...]): a GoogleTest program; each of its tests is a
# test of ctest. Under emulation, where starting a process is dear, the program is one test.
function(nuv_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE nuv_options ${arg_LIBRARIES} GTest::gmock_main)
    target_link_libraries(${name} PRIVATE nuv_test_options)
    target_precompile_headers(${name} REUSE_FROM nuv_test_headers)
    if(CMAKE_CROSSCOMPILING)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}")
    else()
        gtest_discover_tests(${name} PROPERTIES LABELS "${arg_LABELS}"
                             DISCOVERY_TIMEOUT 120 DISCOVERY_MODE PRE_TEST)
    endif()
endfunction()

# nuv_benchmark(NAME SOURCES... [LIBRARIES...]): a Google Benchmark program.
function(nuv_benchmark name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE nuv_options ${arg_LIBRARIES} benchmark::benchmark_main)
endfunction()
