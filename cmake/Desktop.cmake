# What a desktop knows the window by: its entry in the menu, its icon, its page in software centres.
# The name under which it finds them is VARDEN_APP_ID, and stands nowhere else.
set(VARDEN_APP_ID net.varden.SettingTool)
set(VARDEN_SUMMARY "Sets up Varden label printers over the LAN, a serial port or USB")
set(VARDEN_ICON_SIZES 16 24 32 48 64 128 256)

# The versions, from the headings of the changelog: "## 1.2.3 (2026-01-31)".
set(changelog "${PROJECT_SOURCE_DIR}/docs/CHANGELOG.md")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${changelog}")
file(STRINGS "${changelog}" headings REGEX "^## ")
set(VARDEN_RELEASES)
foreach(heading IN LISTS headings)
  if(NOT heading MATCHES "^## ([0-9.]+) \\(([0-9-]+)\\)$")
    message(FATAL_ERROR "docs/CHANGELOG.md: no version with its day: ${heading}")
  endif()
  if(NOT VARDEN_RELEASES AND NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "docs/CHANGELOG.md begins with ${CMAKE_MATCH_1}, this is ${PROJECT_VERSION}.")
  endif()
  string(APPEND VARDEN_RELEASES
         "\n    <release version=\"${CMAKE_MATCH_1}\" date=\"${CMAKE_MATCH_2}\"/>")
endforeach()

set(desktop "${PROJECT_SOURCE_DIR}/contrib/desktop")
foreach(file desktop metainfo.xml)
  configure_file("${desktop}/setting-tool.${file}.in"
                 "${PROJECT_BINARY_DIR}/desktop/${VARDEN_APP_ID}.${file}" @ONLY)
endforeach()

if(NOT LINUX)
  return()
endif()
install(FILES "${PROJECT_BINARY_DIR}/desktop/${VARDEN_APP_ID}.desktop"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES "${PROJECT_BINARY_DIR}/desktop/${VARDEN_APP_ID}.metainfo.xml"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
install(FILES "${desktop}/icon.svg" DESTINATION "${icons}/scalable/apps"
        RENAME "${VARDEN_APP_ID}.svg")
foreach(size IN LISTS VARDEN_ICON_SIZES)
  install(FILES "${desktop}/icon-${size}.png" DESTINATION "${icons}/${size}x${size}/apps"
          RENAME "${VARDEN_APP_ID}.png")
endforeach()
