#include "editor/BackEnd.h"

#include <GLFW/glfw3.h>
#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

namespace QuillmereEngine {

BackEnd::~BackEnd() = default;

void BackEnd::render() {
    int width, height;
    framebufferSize(width, height);
    glViewport(0, 0, width, height);
    glClearColor(0.05f, 0.055f, 0.065f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
}

Image BackEnd::capture() const {
    Image out;
    framebufferSize(out.width, out.height);
    out.pixels.resize(std::size_t(out.width) * std::size_t(out.height) * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, out.width, out.height, GL_RGB, GL_UNSIGNED_BYTE, out.pixels.data());
    flipRows(out);
    return out;
}

void BackEnd::updateFontTexture() {
    ImGui_ImplOpenGL3_DestroyFontsTexture();
    ImGui_ImplOpenGL3_CreateFontsTexture();
}

}
