/* Preloaded into the editor: the first back end finds no OpenGL functions, the second one does */

#include <dlfcn.h>

bool ImGui_ImplOpenGL3_Init(const char* glslVersion);

/* As exported by the library that this stands in front of */
bool ImGui_ImplOpenGL3_Init(const char* const glslVersion) {
    static bool isFirst = true;
    if(isFirst) {
        isFirst = false;
        return false;
    }
    using Function = bool (*)(const char*);
    const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_Z22ImGui_ImplOpenGL3_InitPKc"));
    return next && next(glslVersion);
}
