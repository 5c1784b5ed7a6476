# Dear ImGui: the target Quillmere::ImGuiHeaders for everyone, and the list QUILLMERE_IMGUI_OBJECTS
# for libQuillmereEditor.so alone. The packaged archive is static and holds every back end; linking it
# whole would need Allegro, SDL, GLUT and Vulkan, and linking it per binary would give each its own
# null context. So the core members and two back ends are taken out of it and go, whole, into the
# one shared library from which every module and program gets them.
find_package(PkgConfig REQUIRED)
pkg_check_modules(IMGUI REQUIRED imgui)
# What the packaged archive itself is linked with
pkg_check_modules(FREETYPE REQUIRED freetype2)
pkg_check_modules(STB REQUIRED stb)
find_package(glfw3 REQUIRED)
find_package(OpenGL REQUIRED COMPONENTS OpenGL EGL)

add_library(QuillmereImGuiHeaders INTERFACE)
add_library(Quillmere::ImGuiHeaders ALIAS QuillmereImGuiHeaders)
target_include_directories(QuillmereImGuiHeaders SYSTEM INTERFACE ${IMGUI_INCLUDE_DIRS})

find_library(QUILLMERE_IMGUI_ARCHIVE NAMES libimgui.a HINTS ${IMGUI_LIBRARY_DIRS} REQUIRED)
mark_as_advanced(QUILLMERE_IMGUI_ARCHIVE)
set(_imguiMembers imgui.o imgui_demo.o imgui_draw.o imgui_freetype.o imgui_tables.o
  imgui_widgets.o imgui_impl_glfw.o imgui_impl_opengl3.o)
set(_imguiFolder ${PROJECT_BINARY_DIR}/imgui)
list(TRANSFORM _imguiMembers PREPEND ${_imguiFolder}/ OUTPUT_VARIABLE _imguiObjects)
file(MAKE_DIRECTORY ${_imguiFolder})
add_custom_command(OUTPUT ${_imguiObjects}
  COMMAND ${CMAKE_AR} x ${QUILLMERE_IMGUI_ARCHIVE} ${_imguiMembers}
  DEPENDS ${QUILLMERE_IMGUI_ARCHIVE}
  WORKING_DIRECTORY ${_imguiFolder}
  COMMENT "Taking Dear ImGui out of ${QUILLMERE_IMGUI_ARCHIVE}"
  VERBATIM)
set_source_files_properties(${_imguiObjects} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
set(QUILLMERE_IMGUI_OBJECTS ${_imguiObjects})

# The rule above belongs to this folder, so a target here has to carry it to the library's
add_custom_target(QuillmereImGuiObjects DEPENDS ${_imguiObjects})
