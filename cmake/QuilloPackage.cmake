# The Debian package: `scripts/package` builds it with CPack. Its dependencies come from
# dpkg-shlibdeps, so they are the libraries the binary really links, at the versions it was built with.
set(QUILLO_MAINTAINER "The Quillo developers <developers@quillo.app>" CACHE STRING "The package's maintainer")

# Debian wants the copyright and a compressed changelog beside every package's files.
set(_doc ${CMAKE_INSTALL_DATADIR}/doc/quillo)
configure_file(${PROJECT_SOURCE_DIR}/resources/debian/copyright ${PROJECT_BINARY_DIR}/debian/copyright @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/resources/debian/changelog ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/debian/changelog.gz
    # -n: no name or time inside, so the same sources make the same package.
    COMMAND gzip -9nkf ${PROJECT_BINARY_DIR}/debian/changelog
    DEPENDS ${PROJECT_BINARY_DIR}/debian/changelog VERBATIM)
add_custom_target(quillo_changelog ALL DEPENDS ${PROJECT_BINARY_DIR}/debian/changelog.gz)
install(FILES ${PROJECT_BINARY_DIR}/debian/copyright ${PROJECT_BINARY_DIR}/debian/changelog.gz DESTINATION ${_doc})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillo)
set(CPACK_PACKAGE_VENDOR "The Quillo developers")
set(CPACK_PACKAGE_CONTACT ${QUILLO_MAINTAINER})
set(CPACK_PACKAGE_HOMEPAGE_URL ${QUILLO_HOMEPAGE})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop remote control for qBittorrent")
# The summary above is the synopsis; this is the text below it.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Quillo drives a qBittorrent server on another computer, a NAS or this
one through its Web UI: a live, filterable table of the server's torrents,
adding torrents from files and links, and the server's preferences.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${QUILLO_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The icons load through the SVG icon plugin, which nothing links.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6")
# Wayland sessions without it fall back to X11; Qt's own texts (standard buttons) come translated with
# the l10n package; GNOME shows tray icons with the extension.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gnome-shell-extension-appindicator, qbittorrent-nox")
set(CPACK_STRIP_FILES ON)
set(CPACK_SET_DESTDIR OFF)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
