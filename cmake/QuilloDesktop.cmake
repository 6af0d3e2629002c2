# What makes Quillo a desktop application once installed: its icon at every size freedesktop icon
# themes use, the desktop entry and the AppStream metainfo, all named by the application id.
include(GNUInstallDirs)

find_program(QUILLO_RSVG_CONVERT rsvg-convert REQUIRED)
set(_icon ${PROJECT_SOURCE_DIR}/resources/icons/hicolor/scalable/apps/${QUILLO_APP_ID}.svg)
set(_renders)
foreach(size 16 22 24 32 48 64 128 256 512)
    set(_png ${PROJECT_BINARY_DIR}/icons/hicolor/${size}x${size}/apps/${QUILLO_APP_ID}.png)
    add_custom_command(OUTPUT ${_png}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/icons/hicolor/${size}x${size}/apps
        COMMAND ${QUILLO_RSVG_CONVERT} --width=${size} --height=${size} --output=${_png} ${_icon}
        DEPENDS ${_icon} VERBATIM)
    list(APPEND _renders ${_png})
endforeach()
add_custom_target(quillo_icons ALL DEPENDS ${_renders})

set(QUILLO_SCREENSHOTS "${QUILLO_HOMEPAGE}/raw/main/docs/screenshots")
set(QUILLO_METAINFO ${PROJECT_BINARY_DIR}/${QUILLO_APP_ID}.metainfo.xml)
configure_file(${PROJECT_SOURCE_DIR}/resources/${QUILLO_APP_ID}.metainfo.xml.in ${QUILLO_METAINFO} @ONLY)
set(QUILLO_DESKTOP_ENTRY ${PROJECT_SOURCE_DIR}/resources/${QUILLO_APP_ID}.desktop)

# Opens .torrent files and magnet links from the desktop; a running Quillo receives them.
install(FILES ${QUILLO_DESKTOP_ENTRY} DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${QUILLO_METAINFO} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${_icon} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(DIRECTORY ${PROJECT_BINARY_DIR}/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
# The manual page, compressed as Debian keeps them (-n: no name or time inside).
set(_manual ${PROJECT_BINARY_DIR}/man/quillo.1.gz)
add_custom_command(OUTPUT ${_manual}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/man
    COMMAND sh -c "gzip -9n < ${PROJECT_SOURCE_DIR}/resources/quillo.1 > ${_manual}"
    DEPENDS ${PROJECT_SOURCE_DIR}/resources/quillo.1 VERBATIM)
add_custom_target(quillo_manual ALL DEPENDS ${_manual})
install(FILES ${_manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The local daemon's installer script, run in a terminal.
install(PROGRAMS ${PROJECT_SOURCE_DIR}/resources/qbt-daemon.sh DESTINATION ${CMAKE_INSTALL_DATADIR}/quillo)

if(QUILLO_BUILD_TESTS)
    find_program(QUILLO_DESKTOP_FILE_VALIDATE desktop-file-validate)
    find_program(QUILLO_APPSTREAMCLI appstreamcli)
    add_test(NAME desktop_entry_valid COMMAND ${QUILLO_DESKTOP_FILE_VALIDATE} ${QUILLO_DESKTOP_ENTRY})
    # --no-net: the screenshots' addresses are checked once published, not from CI.
    add_test(NAME metainfo_valid COMMAND ${QUILLO_APPSTREAMCLI} validate --no-net --explain ${QUILLO_METAINFO})
    add_test(NAME manual_page_complete
             COMMAND ${PROJECT_SOURCE_DIR}/tests/desktop/manual-page.sh $<TARGET_FILE:quillo>
                     ${PROJECT_SOURCE_DIR}/resources/quillo.1)
    add_test(NAME translation_complete
             COMMAND ${PROJECT_SOURCE_DIR}/tests/desktop/translation-complete.sh $<TARGET_FILE:Qt6::lupdate>
                     ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/translations/quillo_de.ts)
    set_tests_properties(desktop_entry_valid metainfo_valid manual_page_complete translation_complete
                         PROPERTIES LABELS unit)
endif()
