# cpack runs it when everything is in its place, before it makes the package of it: Debian has the
# changelog in a form of its own, and changelog and man pages compressed.
set(share "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share")
set(changelog "${share}/doc/${CPACK_PACKAGE_NAME}/changelog")
execute_process(
  COMMAND "${CMAKE_CURRENT_LIST_DIR}/debian-changelog.sh" "${CPACK_PACKAGE_NAME}"
          "${CPACK_PACKAGE_CONTACT}" "${CPACK_VARDEN_CHANGELOG}"
  OUTPUT_FILE "${changelog}" COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD "${changelog}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(GLOB pages "${share}/man/man1/*.1")
execute_process(COMMAND gzip -9 --no-name --force "${changelog}" ${pages} COMMAND_ERROR_IS_FATAL ANY)
