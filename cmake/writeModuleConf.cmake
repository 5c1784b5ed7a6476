# Writes the .conf of a finished module, by which the editor knows it before it opens it:
# cmake -D MODULE=NAME.so -D AUTHOR_CONF=FILE -D BUILD_TYPE=... -P writeModuleConf.cmake
#
# What the module's author wrote, if anything, and the group [build]: what was compiled in by
# moduleRecord.cpp, and size and SHA-256 of the file. That's why it runs after the link, and once more
# after an installation, which changes the file's run path and may strip it. Written under another
# name and renamed, so that nobody sees half of it.
set(_keys library pluginVersion interface imgui "sizeof(ImGuiIO)" "sizeof(ImGuiStyle)"
  "sizeof(ImVec2)" "sizeof(ImVec4)" "sizeof(ImDrawVert)" "sizeof(ImDrawIdx)")

cmake_path(REPLACE_EXTENSION MODULE LAST_ONLY .conf OUTPUT_VARIABLE _conf)
set(_content "")
if(AUTHOR_CONF)
  file(READ ${AUTHOR_CONF} _content)
  if(_content MATCHES "(^|\n)[ \t]*\\[build\\]")
    # A line that begins with a space isn't broken
    message(FATAL_ERROR " ${AUTHOR_CONF}: the group [build] is written by the build")
  endif()
  if(_content MATCHES "[^\n]$")
    string(APPEND _content "\n")
  endif()
endif()

string(APPEND _content "[build]\n# Written with the module's file, which it has to fit\n")
file(STRINGS ${MODULE} _records REGEX "QuillmereModule: ")
foreach(_key IN LISTS _keys)
  string(REGEX REPLACE "([()])" "[\\1]" _pattern "${_key}")
  if(NOT "${_records}" MATCHES "QuillmereModule: ${_pattern}=([^;]+)")
    message(FATAL_ERROR " ${MODULE} doesn't say what it was built against: no record of ${_key}")
  endif()
  string(APPEND _content "${_key}=${CMAKE_MATCH_1}\n")
endforeach()
file(SIZE ${MODULE} _size)
file(SHA256 ${MODULE} _hash)
string(APPEND _content "type=${BUILD_TYPE}\nsize=${_size}\nsha256=${_hash}\n")

file(WRITE ${_conf}.new "${_content}")
file(RENAME ${_conf}.new ${_conf})
