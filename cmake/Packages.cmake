# What is shipped: pkg-config's file, the Debian packages and the tarball of the sources. scripts/package makes them.

set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH OV_PC_PREFIX /${pkgconfig} /)
string(REGEX REPLACE "/$" "" OV_PC_PREFIX ${OV_PC_PREFIX})
configure_file(cmake/ov-FilterUtilities.pc.in ov-FilterUtilities.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ov-FilterUtilities.pc DESTINATION ${pkgconfig} COMPONENT dev)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ov-pipeline)
set(CPACK_PACKAGE_VENDOR ov)
set(CPACK_PACKAGE_CONTACT "ov <ov@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ov-pipeline)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Plays the print filter pipeline outside a spooler
 The program ov-pipeline, the libraries of a printer driver's filters that it
 runs on, sample filters and queues, and a filter for CUPS.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-dejavu-core, ghostscript")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "cups, mupdf-tools, libgxps-utils")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libov-filterutilities-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEV_DESCRIPTION "Filter utilities of a printer driver: development files
 Headers, the files of CMake and pkg-config, and the sources of the samples.")
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "ov-pipeline (= ${PROJECT_VERSION}), g++ (>= 4:12)")

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME ov-pipeline-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES "/\\\\.git/" "^${CMAKE_SOURCE_DIR}/build/" "^${CMAKE_SOURCE_DIR}/out/")
include(CPack)
