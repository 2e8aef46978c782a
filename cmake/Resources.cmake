# The build tree carries its data as an installed product does: share/commondlg3 holds the resource archives,
# share/locale/<language>/LC_MESSAGES the catalogs.
set(COMMONDLG3_SHARE_DIR ${CMAKE_BINARY_DIR}/share/commondlg3)
set(COMMONDLG3_LOCALE_DIR ${CMAKE_BINARY_DIR}/share/locale)
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

# commondlg3_add_catalogs(TARGET [INSTALL] DOMAIN <name> SOURCE_DIR <dir>)
# Compiles every <dir>/<language>.po into the build tree: a language is added by its file. Beside the archives stands the
# template <name>.pot, from which another translation begins.
function(commondlg3_add_catalogs target)
    cmake_parse_arguments(ARG "INSTALL" "DOMAIN;SOURCE_DIR" "" ${ARGN})
    set(scripts ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../scripts)
    set(english ${ARG_SOURCE_DIR}/en.po)
    set(template ${COMMONDLG3_SHARE_DIR}/${ARG_DOMAIN}.pot)
    add_custom_command(OUTPUT ${template}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${COMMONDLG3_SHARE_DIR}
        COMMAND Python3::Interpreter -B ${scripts}/make_template.py ${english} ${template}
        DEPENDS ${english} ${scripts}/make_template.py ${scripts}/catalog_format.py
        COMMENT "Making ${ARG_DOMAIN}.pot" VERBATIM)
    if(ARG_INSTALL)
        install(FILES ${template} DESTINATION ${CMAKE_INSTALL_DATADIR}/commondlg3)
    endif()

    set(all)
    file(GLOB catalogs CONFIGURE_DEPENDS ${ARG_SOURCE_DIR}/*.po)
    foreach(po ${catalogs})
        cmake_path(GET po STEM language)
        set(folder ${COMMONDLG3_LOCALE_DIR}/${language}/LC_MESSAGES)
        set(out ${folder}/${ARG_DOMAIN}.mo)
        add_custom_command(OUTPUT ${out}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            COMMAND ${GETTEXT_MSGFMT_EXECUTABLE} --check-format --check-header -o ${out} ${po}
            DEPENDS ${po} COMMENT "Compiling ${ARG_DOMAIN} ${language}" VERBATIM)
        list(APPEND all ${out})
        if(ARG_INSTALL)
            install(FILES ${out} DESTINATION ${CMAKE_INSTALL_DATADIR}/locale/${language}/LC_MESSAGES)
        endif()
    endforeach()
    foreach(language ${COMMONDLG3_PSEUDO_LANGUAGES})
        set(po ${CMAKE_CURRENT_BINARY_DIR}/${ARG_DOMAIN}.${language}.po)
        set(folder ${COMMONDLG3_LOCALE_DIR}/${language}/LC_MESSAGES)
        set(out ${folder}/${ARG_DOMAIN}.mo)
        add_custom_command(OUTPUT ${out}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            COMMAND Python3::Interpreter -B ${scripts}/make_pseudo_catalog.py ${english} ${language} ${po}
            COMMAND ${GETTEXT_MSGFMT_EXECUTABLE} -o ${out} ${po}
            DEPENDS ${english} ${scripts}/make_pseudo_catalog.py ${scripts}/catalog_format.py
            COMMENT "Making up ${ARG_DOMAIN} ${language}" VERBATIM)
        list(APPEND all ${out})
    endforeach()
    # A language whose file is gone is offered no longer.
    file(GLOB built ${COMMONDLG3_LOCALE_DIR}/*/LC_MESSAGES/${ARG_DOMAIN}.mo)
    list(REMOVE_ITEM built ${all})
    if(built)
        file(REMOVE ${built})
    endif()
    add_custom_target(${target} ALL DEPENDS ${all} ${template})
endfunction()
