# quillmere_add_module(NAME SOURCES...)
#
# A plugin module that the editor loads at run time: NAME.so and NAME.conf in the folder
# QUILLMERE_MODULE_DIR (`modules` in the project's build folder unless set before), installed where
# the editor of the same prefix looks. NAME.conf is written by the build, see writeModuleConf.cmake;
# one in the current source folder becomes the first part of it, so that a module may name plugins
# that it depends on.
#
# quillmere_add_module_file(NAME FILE FOLDER SOURCES...)
#
# Only the target NAME of such a module: FILE.so and FILE.conf in FOLDER. It exports the five entry
# points of CORRADE_PLUGIN_REGISTER and nothing else; hidden visibility alone would still let
# instantiations of standard templates out, hence the version script. -fno-gnu-unique lets dlclose()
# really unmap it (clang makes no unique symbols and rejects the flag).
#
# The file is used as it is in this project and in the installed package.

function(quillmere_add_module_file name file folder)
  set(_here ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  set(_authorConf ${CMAKE_CURRENT_SOURCE_DIR}/${file}.conf)
  if(NOT EXISTS ${_authorConf})
    set(_authorConf "")
  endif()

  # The expression in the output folder keeps generators of several configurations from adding theirs
  add_library(${name} MODULE ${ARGN} ${_here}/moduleRecord.cpp)
  target_link_libraries(${name} PRIVATE QuillmereEditor::QuillmereEditor)
  target_compile_definitions(${name} PRIVATE CORRADE_DYNAMIC_PLUGIN)
  target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  target_link_options(${name} PRIVATE -Wl,--version-script=${_here}/module-exports.map)
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    OUTPUT_NAME ${file}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    INSTALL_RPATH "$ORIGIN/../.."
    LINK_DEPENDS "${_here}/module-exports.map;${_here}/writeModuleConf.cmake;${_authorConf}"
    LIBRARY_OUTPUT_DIRECTORY $<1:${folder}>)
  if(COMMAND quillmere_target)
    quillmere_target(${name})
  endif()
  add_custom_command(TARGET ${name} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -D MODULE=$<TARGET_FILE:${name}> -D AUTHOR_CONF=${_authorConf}
      -D BUILD_TYPE=$<CONFIG> -P ${_here}/writeModuleConf.cmake
    BYPRODUCTS ${folder}/${file}.conf
    VERBATIM)
endfunction()

function(quillmere_add_module name)
  if(NOT QUILLMERE_MODULE_DIR)
    set(QUILLMERE_MODULE_DIR ${PROJECT_BINARY_DIR}/modules)
  endif()
  quillmere_add_module_file(${name} ${name} ${QUILLMERE_MODULE_DIR} ${ARGN})
  set_property(GLOBAL APPEND PROPERTY QUILLMERE_MODULES ${name})
  # A module that lacks CORRADE_PLUGIN_REGISTER isn't found out by the editor only
  target_link_options(${name} PRIVATE -Wl,--no-undefined-version)

  install(TARGETS ${name} LIBRARY DESTINATION ${QUILLMERE_MODULE_INSTALL_DIR})
  set(_authorConf ${CMAKE_CURRENT_SOURCE_DIR}/${name}.conf)
  if(NOT EXISTS ${_authorConf})
    set(_authorConf "")
  endif()
  set(_installed "\${CMAKE_INSTALL_PREFIX}/${QUILLMERE_MODULE_INSTALL_DIR}/${name}")
  install(CODE "
    set(MODULE \"\$ENV{DESTDIR}${_installed}.so\")
    set(AUTHOR_CONF \"${_authorConf}\")
    set(BUILD_TYPE \"\${CMAKE_INSTALL_CONFIG_NAME}\")
    include(\"${CMAKE_CURRENT_FUNCTION_LIST_DIR}/writeModuleConf.cmake\")
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"${_installed}.conf\")")
endfunction()
