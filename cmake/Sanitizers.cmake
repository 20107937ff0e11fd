if(VARDEN_SANITIZE)
  add_compile_options(-fsanitize=${VARDEN_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VARDEN_SANITIZE})
endif()
