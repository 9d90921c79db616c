# Installation and the Debian package: the command-line program and the
# desktop program, the desktop entry with its icon, the manual and the
# examples. `cpack -G DEB` in a Release build makes the package.
include(GNUInstallDirs)

install(TARGETS tobel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET tobel-gui)
  install(TARGETS tobel-gui RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tobel-gui.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tobel-gui.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/docs/manual.html DESTINATION ${CMAKE_INSTALL_DATADIR}/tobel)
file(GLOB TOBEL_EXAMPLE_FILES ${PROJECT_SOURCE_DIR}/examples/*.tob ${PROJECT_SOURCE_DIR}/examples/README.md)
install(FILES ${TOBEL_EXAMPLE_FILES} DESTINATION ${CMAKE_INSTALL_DATADIR}/tobel/examples)

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "tobel")
set(CPACK_PACKAGE_VENDOR "TOBEL-3 developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "TOBEL-3 developers <tobel-3@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "factor of safety of slopes by limit-equilibrium column methods, in 2-D and 3-D")
set(CPACK_PACKAGE_DESCRIPTION
    "TOBEL-3 computes the factor of safety of a soil or rock slope by Bishop's simplified,\n\
Janbu, Spencer's and the Morgenstern-Price methods over columns, in two or three\n\
dimensions, for one sliding surface or in a grid or auto search for the critical one.\n\
It has a desktop program (tobel-gui) and a command-line program (tobel).")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "TOBEL-3 developers <tobel-3@localhost>")
set(CPACK_DEBIAN_PACKAGE_SECTION "science")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# The printed pages use a serif face with the metrics of Times New Roman.
set(TOBEL_DEB_EXTRA_DEPENDS "fonts-liberation2")
find_program(TOBEL_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(TOBEL_DPKG_SHLIBDEPS)
  # The libraries' packages (Qt 6, oneTBB, the C++ runtime) as the binaries need them.
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "${TOBEL_DEB_EXTRA_DEPENDS}")
else()
  set(CPACK_DEBIAN_PACKAGE_DEPENDS
      "libqt6core6, libqt6gui6, libqt6widgets6, libqt6printsupport6, libqt6svg6, libtbb12, libstdc++6, ${TOBEL_DEB_EXTRA_DEPENDS}")
endif()
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-image-formats-plugins")
include(CPack)
