# The build tree carries its data as an installed product does: share/commondlg3 holds the resource archives,
# share/locale/<language>/LC_MESSAGES the catalogs.
set(COMMONDLG3_SHARE_DIR ${CMAKE_BINARY_DIR}/share/commondlg3)
set(COMMONDLG3_LOCALE_DIR ${CMAKE_BINARY_DIR}/share/locale)
set(COMMONDLG3_LANGUAGES en de ja ar)
# Made up from English, for looking at windows with long texts in either direction; not installed.
set(COMMONDLG3_PSEUDO_LANGUAGES en_XA ar_XB)

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
    set(script ${PROJECT_SOURCE_DIR}/scripts/make_pseudo_catalog.py)
    set(english ${ARG_SOURCE_DIR}/en.po)
    foreach(language ${COMMONDLG3_PSEUDO_LANGUAGES})
        set(po ${CMAKE_CURRENT_BINARY_DIR}/${ARG_DOMAIN}.${language}.po)
        set(out ${COMMONDLG3_LOCALE_DIR}/${language}/LC_MESSAGES/${ARG_DOMAIN}.mo)
        add_custom_command(OUTPUT ${out}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${COMMONDLG3_LOCALE_DIR}/${language}/LC_MESSAGES
            COMMAND Python3::Interpreter -B ${script} ${english} ${language} ${po}
            COMMAND ${GETTEXT_MSGFMT_EXECUTABLE} -o ${out} ${po}
            DEPENDS ${english} ${script} ${PROJECT_SOURCE_DIR}/scripts/catalog_format.py
            COMMENT "Making up ${ARG_DOMAIN} ${language}" VERBATIM)
        list(APPEND all ${out})
    endforeach()
    add_custom_target(${target} ALL DEPENDS ${all})
endfunction()
