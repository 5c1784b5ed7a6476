# Fails unless a module exports exactly the five entry points: cmake -D NM=... -D MODULE=... -P
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${MODULE}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
set(names "")
foreach(line IN LISTS lines)
  string(REGEX MATCH "^[^ ]+" name "${line}")
  list(APPEND names ${name})
endforeach()
list(SORT names)
set(expected pluginFinalizer pluginInitializer pluginInstancer pluginInterface pluginVersion)
if(NOT names STREQUAL expected)
  message(FATAL_ERROR "${MODULE} exports ${names}\nbut is to export ${expected}")
endif()
