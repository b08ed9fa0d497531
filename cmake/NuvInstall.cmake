# SPDX-License-Identifier: Apache-2.0
# What an installation holds: headers, libnuv, both platforms, a CMake package, pkg-config files, and
# the tool where it is built. Nothing in it names the prefix, so the tree may be moved afterwards.
include(CMakePackageConfigHelpers)

set_target_properties(nuv_platform_api PROPERTIES EXPORT_NAME platform_api)
install(TARGETS nuv nuv_platform_api nuv_platform_linux nuv_platform_fake EXPORT nuvTargets)
install(DIRECTORY include/nuv platform/include/nuv_platform
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.hpp" PATTERN "*.h")

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/nuv")
install(EXPORT nuvTargets NAMESPACE nuv:: DESTINATION "${package_dir}")
configure_package_config_file(cmake/nuvConfig.cmake.in nuvConfig.cmake
                              INSTALL_DESTINATION "${package_dir}")
# Before 1.0 a minor version may break its callers.
write_basic_package_version_file(nuvConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/nuvConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/nuvConfigVersion.cmake" DESTINATION "${package_dir}")

# nuv.pc is for programs, nuv-fake.pc for their unit tests: the same library above another platform.
set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}/${pc_dir}"
           OUTPUT_VARIABLE pc_to_prefix)
function(nuv_pkg_config name platform)
    if(NOT platform STREQUAL "external")
        set(platform_library " -lnuv_platform_${platform}")
    endif()
    configure_file(cmake/nuv.pc.in "${name}.pc" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc" DESTINATION "${pc_dir}")
endfunction()
nuv_pkg_config(nuv "${NUV_PLATFORM}")
nuv_pkg_config(nuv-fake fake)

if(TARGET nuvctl)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY "${CMAKE_INSTALL_FULL_BINDIR}"
               OUTPUT_VARIABLE bin_to_lib)
    set_target_properties(nuvctl PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
    install(TARGETS nuvctl)
    file(GLOB manuals CONFIGURE_DEPENDS tools/nuvctl/*.1)
    install(FILES ${manuals} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    if(EXISTS "${PROJECT_SOURCE_DIR}/tools/nuvctl/nuvctl.bash")
        install(FILES tools/nuvctl/nuvctl.bash RENAME nuvctl
                DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    endif()
endif()
