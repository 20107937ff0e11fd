# The documents that are installed, and how cpack makes a Debian package of what is installed: ./package
# calls it. What is said of the program is said here and in cmake/Desktop.cmake.
install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}"
        FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg" PATTERN "*.json"
        PATTERN "man" EXCLUDE PATTERN "CHANGELOG.md" EXCLUDE)
if(NOT LINUX)
  install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
  return()
endif()

# Debian wants an address. Nobody has one that could be said here; this one can never be another's.
set(VARDEN_MAINTAINER "The Varden Setting Tool authors <authors@varden.invalid>")

# The licence as Debian writes it: without its heading and its years, which stand above it there.
file(READ LICENSE VARDEN_LICENSE)
string(REGEX REPLACE "^.*\n\nPermission" "Permission" VARDEN_LICENSE "${VARDEN_LICENSE}")
string(STRIP "${VARDEN_LICENSE}" VARDEN_LICENSE)
string(REPLACE "\n\n" "\n.\n" VARDEN_LICENSE "${VARDEN_LICENSE}")
string(REPLACE "\n" "\n " VARDEN_LICENSE " ${VARDEN_LICENSE}")
configure_file(contrib/package/copyright.in "${PROJECT_BINARY_DIR}/package/copyright" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/copyright" DESTINATION "${CMAKE_INSTALL_DOCDIR}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME varden-setting-tool)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${VARDEN_MAINTAINER}")
# Debian's summaries begin small and are no sentences.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "window and command line that set up Varden label printers")
set(CPACK_PACKAGE_DESCRIPTION "\
Reads the settings of a Varden label printer over the LAN, a serial port or
USB, shows them in a window of three tabs, writes them back, keeps them in
files, and runs the printer's service functions.

With it come varden, a command line for scripts that explains the settings,
checks, converts and compares settings files and tells which ports there are,
varden-printer-simulator, a printer made of software, and for many printers a
collection for Ansible, a watch for Prometheus and a nightly backup.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The window asks for Arial; these letters are as wide.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS fonts-liberation)
# What varden-printer-simulator --usb plugs its printer in with, and what many printers are worked with.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "umockdev, ansible-core (>= 2.14), parallel, jq, git")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/contrib/package/debian-documents.cmake")
set(CPACK_VARDEN_CHANGELOG "${PROJECT_SOURCE_DIR}/docs/CHANGELOG.md")
include(CPack)
