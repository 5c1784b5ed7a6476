# Quillmere::Httplib, the compiled library of the package. Its flags turn features on that change the
# layout of its classes, so that whoever includes the header has to have the same ones.
find_package(PkgConfig REQUIRED)
pkg_check_modules(HTTPLIB REQUIRED cpp-httplib)
find_library(QUILLMERE_HTTPLIB_LIBRARY NAMES cpp-httplib HINTS ${HTTPLIB_LIBRARY_DIRS} REQUIRED)
find_path(QUILLMERE_HTTPLIB_INCLUDE httplib.h HINTS ${HTTPLIB_INCLUDE_DIRS} REQUIRED)
mark_as_advanced(QUILLMERE_HTTPLIB_LIBRARY QUILLMERE_HTTPLIB_INCLUDE)
find_package(Threads REQUIRED)

add_library(QuillmereHttplib INTERFACE)
add_library(Quillmere::Httplib ALIAS QuillmereHttplib)
target_include_directories(QuillmereHttplib SYSTEM INTERFACE ${QUILLMERE_HTTPLIB_INCLUDE})
target_compile_options(QuillmereHttplib INTERFACE ${HTTPLIB_CFLAGS_OTHER})
target_link_libraries(QuillmereHttplib INTERFACE ${QUILLMERE_HTTPLIB_LIBRARY} Threads::Threads)
