# varden_man_page(NAME): the man page of a program, from docs/man/NAME.1.scd. Where scdoc is not there,
# pages are not made.
find_program(VARDEN_SCDOC scdoc)

function(varden_man_page p_name)
  if(NOT VARDEN_SCDOC)
    return()
  endif()
  set(page "${CMAKE_CURRENT_BINARY_DIR}/${p_name}.1")
  set(source "${PROJECT_SOURCE_DIR}/docs/man/${p_name}.1.scd")
  add_custom_command(OUTPUT "${page}" COMMAND "${VARDEN_SCDOC}" < "${source}" > "${page}"
                     DEPENDS "${source}" VERBATIM)
  add_custom_target(${p_name}-man-page ALL DEPENDS "${page}")
  install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endfunction()
