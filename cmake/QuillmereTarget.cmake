# What every target of the project is compiled with.
#
# CORRADE_IS_DEBUG_BUILD keeps Corrade's checks in Release, too: a null pointer there has to end
# with its message and not with a crash. The deprecated Corrade headers are used on purpose, they
# are the ones that all supported releases have.
add_library(QuillmereBuildFlags INTERFACE)
target_compile_features(QuillmereBuildFlags INTERFACE cxx_std_17)
target_compile_options(QuillmereBuildFlags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wno-deprecated-declarations)
target_compile_definitions(QuillmereBuildFlags INTERFACE CORRADE_IS_DEBUG_BUILD)

# Programs, too, reach the variables of libraries through the global offset table. Without it the
# linker gives a program a copy of Dear ImGui's GImGui, which one of the packaged objects doesn't use
# as it was compiled for programs only: the process then has two contexts.
set(_kind $<TARGET_PROPERTY:TYPE>)
target_compile_options(QuillmereBuildFlags INTERFACE
  $<$<OR:$<STREQUAL:${_kind},EXECUTABLE>,$<STREQUAL:${_kind},STATIC_LIBRARY>>:-fPIC>)

# quillmere_target(NAME): our own settings for a target of this tree
function(quillmere_target name)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:QuillmereBuildFlags>)
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
endfunction()
