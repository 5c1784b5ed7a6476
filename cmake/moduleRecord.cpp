/* Part of every module: what it was compiled against, as text that writeModuleConf.cmake looks for in
   the finished file. It's compiled with the module's own flags, as those may change the sizes, and
   read from the file instead of from an object, which holds no text with link-time optimization. */

#include <array>
#include <cstddef>

#include <Corrade/PluginManager/AbstractManager.h>
#include <imgui.h>

#include "host/AbstractModule.h"
#include "host/Version.h"

/* Against the optimizer and against a linker that leaves out what nothing refers to */
#if defined(__has_attribute) && __has_attribute(retain)
#define KEPT __attribute__((used, retain))
#else
#define KEPT __attribute__((used))
#endif

#define TEXT_OF_TOKENS(...) #__VA_ARGS__
#define TEXT_OF(macro) TEXT_OF_TOKENS(macro)
#define RECORD(key) "QuillmereModule: " key "="

namespace {

/* Twenty digits are enough for any size, the rest stays zero and ends the text */
template<std::size_t keySize> constexpr std::array<char, keySize + 20> sizeRecord(
    const char (&key)[keySize], const std::size_t value) {
    std::array<char, keySize + 20> out{};
    std::size_t end = 0;
    for(; key[end]; ++end)
        out[end] = key[end];
    for(std::size_t rest = value; rest; rest /= 10)
        ++end;
    for(std::size_t rest = value; rest; rest /= 10)
        out[--end] = char('0' + rest % 10);
    return out;
}

KEPT constexpr char Library[] = RECORD("library") QUILLMERE_VERSION;
KEPT constexpr char PluginVersion[] = RECORD("pluginVersion") TEXT_OF(CORRADE_PLUGIN_VERSION);
KEPT constexpr char Interface[] = RECORD("interface") QUILLMERE_MODULE_INTERFACE;

/* What IMGUI_CHECKVERSION() compares */
KEPT constexpr char ImGuiVersion[] = RECORD("imgui") IMGUI_VERSION;
KEPT constexpr auto IoSize = sizeRecord(RECORD("sizeof(ImGuiIO)"), sizeof(ImGuiIO));
KEPT constexpr auto StyleSize = sizeRecord(RECORD("sizeof(ImGuiStyle)"), sizeof(ImGuiStyle));
KEPT constexpr auto Vec2Size = sizeRecord(RECORD("sizeof(ImVec2)"), sizeof(ImVec2));
KEPT constexpr auto Vec4Size = sizeRecord(RECORD("sizeof(ImVec4)"), sizeof(ImVec4));
KEPT constexpr auto VertexSize = sizeRecord(RECORD("sizeof(ImDrawVert)"), sizeof(ImDrawVert));
KEPT constexpr auto IndexSize = sizeRecord(RECORD("sizeof(ImDrawIdx)"), sizeof(ImDrawIdx));

}
