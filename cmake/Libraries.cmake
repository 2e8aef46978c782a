include(GenerateExportHeader)

# commondlg3_add_library(NAME FOLDER <dir> SOURCES <files> [PUBLIC <targets>] [PRIVATE <targets>])
#
# A shared library of ours: public headers in <dir>/include, an export macro <NAME>_EXPORT in <NAME>/export.h,
# everything else hidden. PUBLIC is what its headers show, PRIVATE what nobody above it may see.
function(commondlg3_add_library name)
    cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(commondlg3::${name} ALIAS ${name})
    generate_export_header(${name} EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/generated/${name}/export.h)
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${ARG_FOLDER}/include>
        $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}/generated>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_include_directories(${name} PRIVATE ${ARG_FOLDER}/src)
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} $<BUILD_INTERFACE:commondlg3_settings>)
    target_compile_features(${name} INTERFACE cxx_std_17)
    target_link_options(${name} PRIVATE -Wl,--no-undefined)
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
