# Corrade::Containers, Corrade::Utility and Corrade::PluginManager, from an installed Corrade where
# there is one and from external/corrade elsewhere. Nothing else in the tree knows which it is.
set(QUILLMERE_BUNDLED_CORRADE AUTO CACHE STRING
  "ON: external/corrade, OFF: an installed Corrade, AUTO: an installed one where it is found")
set_property(CACHE QUILLMERE_BUNDLED_CORRADE PROPERTY STRINGS AUTO ON OFF)

set(_corradeBundled ${QUILLMERE_BUNDLED_CORRADE})
if(_corradeBundled STREQUAL "AUTO")
  find_package(Corrade QUIET COMPONENTS Containers Utility PluginManager)
  set(_corradeBundled ON)
  if(Corrade_FOUND)
    set(_corradeBundled OFF)
  endif()
elseif(NOT _corradeBundled)
  find_package(Corrade REQUIRED COMPONENTS Containers Utility PluginManager)
endif()

if(_corradeBundled)
  message(STATUS "Corrade: bundled subset")
  set(CORRADE_SUBSET_BUILD_TESTS ${QUILLMERE_BUILD_TESTS})
  add_subdirectory(${PROJECT_SOURCE_DIR}/external/corrade)
else()
  message(STATUS "Corrade: installed")
endif()
