# Headers, libraries, CMake package, pkg-config file and resource archive; catalogs are installed where they are made.
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY COMMONDLG3_LIBRARIES)
get_property(header_folders GLOBAL PROPERTY COMMONDLG3_HEADER_FOLDERS)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/commondlg3)

if(NOT COMMONDLG3_DISTRIBUTION)
    set_target_properties(${libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()
set(platform_libraries ${libraries})
list(REMOVE_ITEM platform_libraries commondlg3)
install(TARGETS commondlg3 EXPORT commondlg3Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT commondlg3Targets NAMESPACE commondlg3:: DESTINATION ${package_dir})
# The platform is a package of its own: a product that has another one brings a package of the same name.
if(COMMONDLG3_PLATFORM_DIR)
    install(TARGETS third_party_wx EXPORT commondlg3Targets)
else()
    set(platform_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/commondlg3_platform)
    install(TARGETS ${platform_libraries} third_party_wx EXPORT commondlg3_platformTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
    install(EXPORT commondlg3_platformTargets NAMESPACE commondlg3:: DESTINATION ${platform_package_dir})
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/commondlg3_platformConfig.cmake DESTINATION ${platform_package_dir})
endif()
install(DIRECTORY ${header_folders} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
# What the headers of messages, dialogs, panels and the log show of the platform; those of pages show all of it.
set(messages_libraries wx_helpers1 cfgmgr2 cpil gen_helpers2)
list(TRANSFORM messages_libraries PREPEND commondlg3:: OUTPUT_VARIABLE messages_targets)
list(JOIN messages_targets " " messages_targets)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/commondlg3Config.cmake.in
    ${CMAKE_BINARY_DIR}/commondlg3Config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/commondlg3ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/commondlg3Config.cmake ${CMAKE_BINARY_DIR}/commondlg3ConfigVersion.cmake
    DESTINATION ${package_dir})

# Relative to the file itself, so that the installed folder may be moved. The toolkit has no package file to require.
file(RELATIVE_PATH prefix_from_pc /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
set(wx_cflags ${wxWidgets_CXX_FLAGS})
list(TRANSFORM wxWidgets_INCLUDE_DIRS PREPEND "-I" OUTPUT_VARIABLE wx_include_flags)
list(TRANSFORM wxWidgets_DEFINITIONS PREPEND "-D" OUTPUT_VARIABLE wx_definition_flags)
list(JOIN wx_include_flags " " wx_include_flags)
list(JOIN wx_definition_flags " " wx_definition_flags)
string(APPEND wx_cflags " ${wx_include_flags} ${wx_definition_flags}")
list(JOIN wxWidgets_LIBRARIES " " wx_libs)
function(commondlg3_install_pkg_config pc_name pc_description)
    list(TRANSFORM ARGN PREPEND "-l" OUTPUT_VARIABLE pc_libs)
    list(JOIN pc_libs " " pc_libs)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/commondlg3.pc.in ${CMAKE_BINARY_DIR}/${pc_name}.pc @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/${pc_name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
# The toolkit first: the loader looks for names in the order of a program's libraries, and most are the toolkit's.
set(shared_libraries ${libraries})
list(REMOVE_ITEM shared_libraries msngr2)
list(REVERSE shared_libraries)
commondlg3_install_pkg_config(commondlg3
    "Common dialogs, panels, preference pages and message displays on wxWidgets" ${shared_libraries})
commondlg3_install_pkg_config(commondlg3-messages
    "Common dialogs, panels and message displays on wxWidgets, without preference pages" commondlg3 ${messages_libraries})

install(FILES ${COMMONDLG3_SHARE_DIR}/commondlg3.dat DESTINATION ${CMAKE_INSTALL_DATADIR}/commondlg3)
