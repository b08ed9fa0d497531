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
