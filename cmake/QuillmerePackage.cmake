# The package that find_package(QuillmereEditor) finds in an installed tree: the library with its
# headers, and quillmere_add_module(). Nothing in it names a folder outside of that tree.
include(CMakePackageConfigHelpers)

set(_packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/QuillmereEditor)
set(_packageBinaryDir ${PROJECT_BINARY_DIR}/package)
# An installed Corrade is looked for anew, the bundled one lies beside this package
set(_packageCorrade "find_dependency(Corrade COMPONENTS Containers Utility PluginManager)")
if(_corradeBundled)
  set(_packageCorrade "find_dependency(Corrade CONFIG
  PATHS \"\${CMAKE_CURRENT_LIST_DIR}/../Corrade\" NO_DEFAULT_PATH)")
endif()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/QuillmereEditorConfig.cmake.in
  ${_packageBinaryDir}/QuillmereEditorConfig.cmake
  INSTALL_DESTINATION ${_packageDir}
  NO_SET_AND_CHECK_MACRO)
# The editor loads modules of its own version only, but a patch needs no other source
write_basic_package_version_file(${_packageBinaryDir}/QuillmereEditorConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)

install(EXPORT QuillmereEditorTargets
  NAMESPACE QuillmereEditor::
  DESTINATION ${_packageDir})
install(FILES
  ${CMAKE_CURRENT_LIST_DIR}/QuillmereModule.cmake
  ${CMAKE_CURRENT_LIST_DIR}/module-exports.map
  ${CMAKE_CURRENT_LIST_DIR}/moduleRecord.cpp
  ${CMAKE_CURRENT_LIST_DIR}/writeModuleConf.cmake
  ${_packageBinaryDir}/QuillmereEditorConfig.cmake
  ${_packageBinaryDir}/QuillmereEditorConfigVersion.cmake
  DESTINATION ${_packageDir})
