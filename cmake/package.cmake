# What a desktop and a package manager need of an installation, and the package for Debian and its like.
if(UNIX AND NOT APPLE AND KESTREL_QT)
  set(desktop ${PROJECT_SOURCE_DIR}/packaging/desktop)
  configure_file(${desktop}/kestrel.metainfo.xml.in example.kestrel.kestrel.metainfo.xml @ONLY)
  install(FILES ${desktop}/kestrel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_BINARY_DIR}/example.kestrel.kestrel.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES data/pictures/kestrel.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrel)
set(CPACK_PACKAGE_CONTACT "The Kestrel developers <kestrel@kestrel.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "Kestrel connects a laptop to a vending machine over one serial line. It shows
and edits the machine's settings (doses, times, prices, discounts, payment,
options, clock and temperature), reads its sales data and alarms, and drives
its inputs and outputs in test.

The boards are the master copy of everything: only what a board has confirmed
is shown. A simulated machine is built in, so that everything can be tried
without one.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
# Found by asking the programs which libraries they load.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_layout.cmake)
set(CPACK_KESTREL_SOURCE ${PROJECT_SOURCE_DIR})
include(CPack)
