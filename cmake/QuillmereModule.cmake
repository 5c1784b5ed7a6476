# quillmere_add_module(NAME SOURCES...)
#
# A plugin module that the editor loads at run time: NAME.so and NAME.conf (from the current source
# folder) in the folder `modules`, installed with the editor.
#
# quillmere_add_module_file(NAME FILE FOLDER SOURCES...)
#
# Only the target NAME of such a module: FILE.so in FOLDER. It exports the five entry points of
# CORRADE_PLUGIN_REGISTER and nothing else; hidden visibility alone would still let instantiations
# of standard templates out, hence the version script. -fno-gnu-unique lets dlclose() really unmap it
# (clang makes no unique symbols and rejects the flag).
set(QUILLMERE_MODULE_DIR ${PROJECT_BINARY_DIR}/modules)
set(QUILLMERE_MODULE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/quillmere/modules)
set(_quillmereModuleExports ${CMAKE_CURRENT_LIST_DIR}/module-exports.map)

function(quillmere_add_module_file name file folder)
  add_library(${name} MODULE ${ARGN})
  quillmere_target(${name})
  target_link_libraries(${name} PRIVATE QuillmereEditor)
  target_compile_definitions(${name} PRIVATE CORRADE_DYNAMIC_PLUGIN)
  target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  target_link_options(${name} PRIVATE -Wl,--version-script=${_quillmereModuleExports})
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    OUTPUT_NAME ${file}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    INSTALL_RPATH "$ORIGIN/../.."
    LINK_DEPENDS ${_quillmereModuleExports}
    LIBRARY_OUTPUT_DIRECTORY ${folder})
endfunction()

function(quillmere_add_module name)
  quillmere_add_module_file(${name} ${name} ${QUILLMERE_MODULE_DIR} ${ARGN})
  # A module that lacks CORRADE_PLUGIN_REGISTER isn't found out by the editor only
  target_link_options(${name} PRIVATE -Wl,--no-undefined-version)
  set_property(GLOBAL APPEND PROPERTY QUILLMERE_MODULES ${name})
  configure_file(${CMAKE_CURRENT_SOURCE_DIR}/${name}.conf ${QUILLMERE_MODULE_DIR}/${name}.conf
    COPYONLY)
  install(TARGETS ${name} LIBRARY DESTINATION ${QUILLMERE_MODULE_INSTALL_DIR})
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/${name}.conf
    DESTINATION ${QUILLMERE_MODULE_INSTALL_DIR})
endfunction()
