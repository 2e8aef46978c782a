include(GenerateExportHeader)
include(CheckLinkerFlag)

# Nine tenths of what the loader does to addresses inside a library, in a hundredth of the room.
check_linker_flag(CXX -Wl,-z,pack-relative-relocs COMMONDLG3_CAN_PACK_RELOCATIONS)

# commondlg3_limit_border(TARGET <namespaces>)
#
# Exports what the namespaces hold and nothing else: copies of the standard library's and Boost's templates, which are
# visible by their own wish, would make a border that changes with the compiler, and cost time when they are loaded.
function(commondlg3_limit_border target)
    set(patterns)
    foreach(namespace ${ARGN})
        string(LENGTH ${namespace} length)
        # Functions and variables; then what the compiler makes of classes, and of variables inside functions.
        foreach(kind _ZN _ZNK _ZTVN _ZTIN _ZTSN _ZTTN _ZThn*_N _ZTv*_N _ZTch*_N _ZGVN _ZZN _ZZNK _ZGVZN _ZGVZNK)
            string(APPEND patterns " ${kind}${length}${namespace}*;")
        endforeach()
    endforeach()
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    file(CONFIGURE OUTPUT ${script} CONTENT "{ global:${patterns} local: *; };\n")
    target_link_options(${target} PRIVATE -Wl,--version-script=${script})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()

# commondlg3_add_library(NAME FOLDER <dir> SOURCES <files> [NAMESPACES <names>] [PUBLIC <targets>] [PRIVATE <targets>])
#
# A shared library of ours: public headers in <dir>/include, an export macro <NAME>_EXPORT in <NAME>/export.h,
# everything else hidden. NAMESPACES hold what it exports, if not <NAME>. PUBLIC is what its headers show, PRIVATE what
# nobody above it may see.
function(commondlg3_add_library name)
    cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;NAMESPACES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(commondlg3::${name} ALIAS ${name})
    generate_export_header(${name} EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/generated/${name}/export.h)
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${ARG_FOLDER}/include>
        $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}/generated>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_include_directories(${name} PRIVATE ${ARG_FOLDER}/src)
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} $<BUILD_INTERFACE:commondlg3_settings>)
    if(NOT ARG_NAMESPACES)
        set(ARG_NAMESPACES ${name})
    endif()
    commondlg3_limit_border(${name} ${ARG_NAMESPACES})
    target_compile_features(${name} INTERFACE cxx_std_17)
    # Calls inside a library go straight to their target: nobody puts another in its place.
    target_link_options(${name} PRIVATE -Wl,--no-undefined -Wl,--as-needed -Wl,-Bsymbolic-functions)
    if(COMMONDLG3_CAN_PACK_RELOCATIONS AND NOT COMMONDLG3_SANITIZE)
        target_link_options(${name} PRIVATE -Wl,-z,pack-relative-relocs)
    endif()
    if(COMMONDLG3_SANITIZE)
        # Sanitizer run-time symbols come from the executable.
        target_link_options(${name} PRIVATE -Wl,-z,undefs)
    endif()
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME ${name})
    set_property(GLOBAL APPEND PROPERTY COMMONDLG3_LIBRARIES ${name})
    set_property(GLOBAL APPEND PROPERTY COMMONDLG3_HEADER_FOLDERS
        ${ARG_FOLDER}/include/ ${CMAKE_CURRENT_BINARY_DIR}/generated/)
endfunction()
