# SPDX-License-Identifier: Apache-2.0
include(GoogleTest)
if(CMAKE_CROSSCOMPILING)
    # Debian's libgtest-dev is for the build machine; its source package is for every machine.
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
    if(NOT TARGET GTest::gmock_main)
        add_library(GTest::gmock_main ALIAS gmock_main)
    endif()
else()
    find_package(GTest REQUIRED)
endif()

nuv_precompile(nuv_test_headers ${standard_headers} <gmock/gmock.h> <gtest/gtest.h>)
target_link_libraries(nuv_test_headers PRIVATE nuv_test_options GTest::gmock_main)
set_target_properties(nuv_test_headers PROPERTIES POSITION_INDEPENDENT_CODE OFF)
target_compile_options(nuv_test_headers PRIVATE -fPIE)
