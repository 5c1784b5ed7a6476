# PortableFileDialogs::PortableFileDialogs, the header of the machine where the compiler finds one
# and external/portable-file-dialogs elsewhere. Nothing else in the tree but a test that only holds
# for one of them knows which it is; QUILLMERE_PFD_IS_BUNDLED tells it.
include(CheckIncludeFileCXX)

set(QUILLMERE_BUNDLED_PFD AUTO CACHE STRING
  "ON: external/portable-file-dialogs, OFF: the machine's header, AUTO: that one where it is found")
set_property(CACHE QUILLMERE_BUNDLED_PFD PROPERTY STRINGS AUTO ON OFF)

set(QUILLMERE_PFD_IS_BUNDLED ${QUILLMERE_BUNDLED_PFD})
if(QUILLMERE_BUNDLED_PFD STREQUAL "AUTO" OR NOT QUILLMERE_BUNDLED_PFD)
  find_package(Threads REQUIRED)
  set(CMAKE_REQUIRED_FLAGS -std=c++17)
  # Each time, as find_package() does: it may have been installed meanwhile
  unset(QUILLMERE_PFD_FOUND CACHE)
  check_include_file_cxx(portable-file-dialogs.h QUILLMERE_PFD_FOUND)
  unset(CMAKE_REQUIRED_FLAGS)
  set(QUILLMERE_PFD_IS_BUNDLED ON)
  if(QUILLMERE_PFD_FOUND)
    set(QUILLMERE_PFD_IS_BUNDLED OFF)
  elseif(NOT QUILLMERE_BUNDLED_PFD STREQUAL "AUTO")
    message(FATAL_ERROR "QUILLMERE_BUNDLED_PFD is ${QUILLMERE_BUNDLED_PFD}, but the compiler finds"
      " no portable-file-dialogs.h")
  endif()
endif()

if(QUILLMERE_PFD_IS_BUNDLED)
  message(STATUS "portable-file-dialogs: bundled subset")
  set(PFD_SUBSET_BUILD_TESTS ${QUILLMERE_BUILD_TESTS})
  add_subdirectory(${PROJECT_SOURCE_DIR}/external/portable-file-dialogs)
else()
  message(STATUS "portable-file-dialogs: installed")
  add_library(PortableFileDialogs INTERFACE)
  add_library(PortableFileDialogs::PortableFileDialogs ALIAS PortableFileDialogs)
  target_link_libraries(PortableFileDialogs INTERFACE Threads::Threads)
endif()
