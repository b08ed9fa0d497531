# SPDX-License-Identifier: Apache-2.0
# One function per kind of target, and the compile options that all of them share.

add_library(nuv_options INTERFACE)
target_compile_features(nuv_options INTERFACE cxx_std_20 c_std_11)
target_compile_options(nuv_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # Log records and assertions name a file from the root of the repository.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
target_include_directories(nuv_options INTERFACE "${PROJECT_SOURCE_DIR}")
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
