# SPDX-License-Identifier: Apache-2.0
# What an installation holds: headers, libraries, a CMake package, pkg-config files, documents and
# examples, and the tool where it is built. Nothing in it names the prefix: the tree may be moved.
include(CMakePackageConfigHelpers)

set(installed_targets nuv nuv_core nuv_platform_api nuv_platform_fake)
if(TARGET nuv_platform_linux)
    list(APPEND installed_targets nuv_platform_linux)
endif()
set_target_properties(nuv_platform_api PROPERTIES EXPORT_NAME platform_api)
install(TARGETS ${installed_targets} EXPORT nuvTargets)
install(DIRECTORY include/nuv platform/include/nuv_platform
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.hpp" PATTERN "*.h")

list(TRANSFORM installed_targets REPLACE "^nuv_" "" OUTPUT_VARIABLE installed_components)
list(JOIN installed_components " " installed_components)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/nuv")
install(EXPORT nuvTargets NAMESPACE nuv:: DESTINATION "${package_dir}")
configure_package_config_file(cmake/nuvConfig.cmake.in nuvConfig.cmake
                              INSTALL_DESTINATION "${package_dir}")
# The ABI rule of include/nuv/version.hpp.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(compatibility SameMinorVersion)
else()
    set(compatibility SameMajorVersion)
endif()
write_basic_package_version_file(nuvConfigVersion.cmake COMPATIBILITY ${compatibility})
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/nuvConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/nuvConfigVersion.cmake" DESTINATION "${package_dir}")

# nuv-core.pc is the library without a platform; nuv.pc adds the chosen one, for programs;
# nuv-fake.pc adds the test double, for their unit tests.
set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}/${pc_dir}"
           OUTPUT_VARIABLE pc_to_prefix)
function(nuv_pkg_config name description)
    cmake_parse_arguments(arg "" "REQUIRES;REQUIRES_PRIVATE;LIBS;LIBS_PRIVATE" "" ${ARGN})
    configure_file(cmake/nuv.pc.in "${name}.pc" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc" DESTINATION "${pc_dir}")
endfunction()
# nuv-platform-NAME.pc is a platform alone. A static library stands before the one that it calls, and
# pkg-config keeps the order of what a package requires.
function(nuv_platform_pkg_config name platform)
    set(platform_requires)
    if(platform STREQUAL "linux" AND NUV_USES_UBOOTENV AND NOT BUILD_SHARED_LIBS)
        set(platform_requires libubootenv)
    endif()
    list(TRANSFORM NUV_OPTIONAL_PLATFORM_CALLS PREPEND "-Wl,-u," OUTPUT_VARIABLE optional_calls)
    list(JOIN optional_calls " " optional_calls)
    nuv_pkg_config(nuv-platform-${platform} "The platform ${platform} of nuv"
        REQUIRES "${platform_requires}"
        LIBS "-L\${libdir} ${optional_calls} -lnuv_platform_${platform}")
    nuv_pkg_config(${name} "${PROJECT_DESCRIPTION}, on the platform ${platform}"
        REQUIRES "nuv-core nuv-platform-${platform}")
endfunction()

if(BUILD_SHARED_LIBS)
    nuv_pkg_config(nuv-core "${PROJECT_DESCRIPTION}, without a platform"
        REQUIRES_PRIVATE yajl LIBS "-L\${libdir} -lnuv")
else()
    # The programs hold what they call, not whole files of the library.
    nuv_pkg_config(nuv-core "${PROJECT_DESCRIPTION}, without a platform"
        REQUIRES yajl LIBS "-L\${libdir} -lnuv -Wl,--gc-sections")
endif()
nuv_platform_pkg_config(nuv-fake fake)
if(NUV_PLATFORM STREQUAL "external")
    nuv_pkg_config(nuv "${PROJECT_DESCRIPTION}, the platform is the program's" REQUIRES nuv-core)
else()
    nuv_platform_pkg_config(nuv ${NUV_PLATFORM})
endif()

install(FILES LICENSE README.md CHANGELOG.md ARCHITECTURE.md CONTRIBUTING.md
        DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs examples DESTINATION "${CMAKE_INSTALL_DOCDIR}"
        FILES_MATCHING PATTERN "*.md" PATTERN "*.cpp" PATTERN "*.hpp" PATTERN "*.pcap"
        PATTERN "*.service")

if(TARGET nuvctl)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY "${CMAKE_INSTALL_FULL_BINDIR}"
               OUTPUT_VARIABLE bin_to_lib)
    set_target_properties(nuvctl PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
    install(TARGETS nuvctl)
    install(FILES tools/nuvctl/nuvctl.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES tools/nuvctl/nuvctl.bash RENAME nuvctl
            DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
endif()
