# SPDX-License-Identifier: Apache-2.0
# nuv_layer(NAME [USES LAYER...] TYPES NAME...) declares one layer of the library and makes an object
# library of its sources, nuv_layer_NAME. "FOLDER/*" stands for all names in that folder.
#
# nuv_finish_layers() makes the library of all layers and writes the table to layers.txt in the build
# folder, where `scripts/check layers` reads it: "layer NAME USED..." and "file PATH LAYER".
set(nuv_layer_roots include/nuv src/shared src/shared/internal)
set(nuv_layer_extensions hpp cpp hpp)
define_property(GLOBAL PROPERTY NUV_LAYERS)

function(nuv_files_of_type variable type)
    set(files)
    foreach(root extension IN ZIP_LISTS nuv_layer_roots nuv_layer_extensions)
        file(GLOB found CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
             "${PROJECT_SOURCE_DIR}/${root}/${type}.${extension}")
        list(APPEND files ${found})
    endforeach()
    set(${variable} ${files} PARENT_SCOPE)
endfunction()
function(nuv_layer name)
    cmake_parse_arguments(arg "" "" "USES;TYPES" ${ARGN})
    get_property(layers GLOBAL PROPERTY NUV_LAYERS)
    get_property(table GLOBAL PROPERTY NUV_LAYER_TABLE)
    foreach(used IN LISTS arg_USES)
        if(NOT used IN_LIST layers)
            message(FATAL_ERROR "Layer ${name} uses ${used}, which is no layer below it")
        endif()
    endforeach()
    list(JOIN arg_USES " " uses)
    string(APPEND table "layer ${name} ${uses}\n")

    set(sources)
    foreach(type IN LISTS arg_TYPES ITEMS ${name})
        nuv_files_of_type(files "${type}")
        if(NOT files AND NOT type STREQUAL name)
            message(FATAL_ERROR "Layer ${name} lists ${type}, but there is no such file")
        endif()
        foreach(file IN LISTS files)
            get_property(owner GLOBAL PROPERTY "NUV_LAYER_OF_${file}")
            if(owner)
                message(FATAL_ERROR "${file} is in two layers, ${owner} and ${name}")
            endif()
            set_property(GLOBAL PROPERTY "NUV_LAYER_OF_${file}" ${name})
            string(APPEND table "file ${file} ${name}\n")
            if(file MATCHES "\\.cpp$")
                list(APPEND sources "${PROJECT_SOURCE_DIR}/${file}")
            endif()
        endforeach()
    endforeach()
    set_property(GLOBAL APPEND PROPERTY NUV_LAYERS ${name})
    set_property(GLOBAL PROPERTY NUV_LAYER_TABLE "${table}")

    add_library(nuv_layer_${name} OBJECT ${sources})
    target_include_directories(nuv_layer_${name} PRIVATE
        "${PROJECT_SOURCE_DIR}/include" "${PROJECT_SOURCE_DIR}/src/shared")
    target_link_libraries(nuv_layer_${name} PRIVATE nuv_options nuv_platform_api PkgConfig::YAJL)
    target_precompile_headers(nuv_layer_${name} REUSE_FROM nuv_library_headers)
endfunction()

function(nuv_finish_layers)
    foreach(root extension IN ZIP_LISTS nuv_layer_roots nuv_layer_extensions)
        file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
             "${PROJECT_SOURCE_DIR}/${root}/*.${extension}")
        foreach(file IN LISTS files)
            get_property(layer GLOBAL PROPERTY "NUV_LAYER_OF_${file}")
            if(NOT layer)
                message(FATAL_ERROR "${file} is in no layer: name it in one of the layers of "
                                    "src/shared/CMakeLists.txt, the lowest whose files it needs")
            endif()
        endforeach()
    endforeach()
    get_property(table GLOBAL PROPERTY NUV_LAYER_TABLE)
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/layers.txt" CONTENT "${table}" @ONLY)
endfunction()
