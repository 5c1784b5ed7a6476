# Sanitizers have to see every object of the process, the bundled Corrade's included, so this is
# the one setting that is made for the whole tree and not for a target.
if(QUILLMERE_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/ubsan-ignore.txt)
  endif()
elseif(QUILLMERE_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(QUILLMERE_SANITIZER)
  message(FATAL_ERROR "QUILLMERE_SANITIZER is empty, address or thread, not ${QUILLMERE_SANITIZER}")
endif()

# GCC's analysis of uninitialized reads gives false alarms in <regex> in instrumented code
if(QUILLMERE_SANITIZER AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wno-maybe-uninitialized)
endif()
