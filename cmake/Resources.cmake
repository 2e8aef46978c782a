# The build tree carries its data as an installed product does: share/commondlg3 holds the resource archives,
# share/locale/<language>/LC_MESSAGES the catalogs.
set(COMMONDLG3_SHARE_DIR ${CMAKE_BINARY_DIR}/share/commondlg3)
set(COMMONDLG3_LOCALE_DIR ${CMAKE_BINARY_DIR}/share/locale)
set(COMMONDLG3_LANGUAGES en de ja ar)

# commondlg3_add_archive(TARGET ARCHIVE <name.dat> SOURCE_DIR <dir> MEMBERS <files relative to dir>)
# Packs the members into build/share/commondlg3/<name.dat>; the same members give the same bytes.
function(commondlg3_add_archive target)
    cmake_parse_arguments(ARG "" "ARCHIVE;SOURCE_DIR" "MEMBERS" ${ARGN})
    set(out ${COMMONDLG3_SHARE_DIR}/${ARG_ARCHIVE})
    set(depends)
    foreach(member ${ARG_MEMBERS})
        list(APPEND depends ${ARG_SOURCE_DIR}/${member})
    endforeach()
    add_custom_command(OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${COMMONDLG3_SHARE_DIR}
        COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/make_archive.py
                ${out} ${ARG_SOURCE_DIR} ${ARG_MEMBERS}
        DEPENDS ${depends} ${PROJECT_SOURCE_DIR}/scripts/make_archive.py
        COMMENT "Packing ${ARG_ARCHIVE}" VERBATIM)
    add_custom_target(${target} ALL DEPENDS ${out})
    set_property(GLOBAL APPEND PROPERTY COMMONDLG3_ARCHIVES ${out})
endfunction()

# commondlg3_add_catalogs(TARGET DOMAIN <name> SOURCE_DIR <dir>)
# Compiles <dir>/<language>.po of every language into the build tree.
function(commondlg3_add_catalogs target)
    cmake_parse_arguments(ARG "" "DOMAIN;SOURCE_DIR" "" ${ARGN})
    set(all)
    foreach(language ${COMMONDLG3_LANGUAGES})
        set(po ${ARG_SOURCE_DIR}/${language}.po)
        set(out ${COMMONDLG3_LOCALE_DIR}/${language}/LC_MESSAGES/${ARG_DOMAIN}.mo)
        add_custom_command(OUTPUT ${out}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${COMMONDLG3_LOCALE_DIR}/${language}/LC_MESSAGES
            COMMAND ${GETTEXT_MSGFMT_EXECUTABLE} --check-format --check-header -o ${out} ${po}
            DEPENDS ${po} COMMENT "Compiling ${ARG_DOMAIN} ${language}" VERBATIM)
        list(APPEND all ${out})
    endforeach()
    add_custom_target(${target} ALL DEPENDS ${all})
endfunction()
