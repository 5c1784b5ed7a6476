# Installs the build into a folder that is then moved, and runs the editor from there. The folder
# stays for the tests that build against it:
# cmake -D BUILD=... -D BINDIR=... -P installedTree.cmake
set(first ${BUILD}/installed-tree-first)
set(tree ${BUILD}/installed-tree)
file(REMOVE_RECURSE ${first} ${tree})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${first}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${first} ${tree})

# Nothing may come from the build
set(editor ${tree}/${BINDIR}/quillmere-editor)
execute_process(COMMAND ldd ${editor} OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
string(FIND "${libraries}" "not found" missing)
string(REGEX MATCH "${BUILD}/(src|external)[^\n]*" fromBuild "${libraries}")
if(NOT missing EQUAL -1 OR fromBuild)
  message(FATAL_ERROR "The installed editor doesn't find its own libraries:\n${libraries}")
endif()

file(WRITE ${tree}/feed.txt "error: seen in an installed tree\n")
execute_process(COMMAND ${editor} --headless --feed ${tree}/feed.txt
  --screenshot ${tree}/picture.png
  OUTPUT_VARIABLE output ERROR_VARIABLE errors COMMAND_ERROR_IS_FATAL ANY)
if(NOT output MATCHES "Initializing View: ConsoleView")
  message(FATAL_ERROR "The installed editor doesn't find its modules:\n${output}${errors}")
endif()
# The installation changes a module's run path, and with it the file that its .conf has to fit
if(errors MATCHES "loaded")
  message(FATAL_ERROR "The installed editor doesn't load all of its modules:\n${errors}")
endif()

# What names a folder of this machine would break the package when it's moved
file(GLOB_RECURSE packageFiles ${tree}/*.cmake ${tree}/*.conf)
foreach(file IN LISTS packageFiles)
  file(STRINGS ${file} lines REGEX "${BUILD}")
  if(lines)
    message(FATAL_ERROR "${file} names the build folder:\n${lines}")
  endif()
endforeach()
