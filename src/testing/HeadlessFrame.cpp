#include "testing/HeadlessFrame.h"

namespace QuillmereEngine { namespace Testing {

namespace {

const char* clipboardText(void* const frame) {
    return static_cast<HeadlessFrame*>(frame)->clipboard.c_str();
}

void setClipboardText(void* const frame, const char* const text) {
    auto& headless = *static_cast<HeadlessFrame*>(frame);
    headless.clipboard = text;
    headless.isClipboardSet = true;
}

}

HeadlessFrame::HeadlessFrame(const ImVec2& size): _context{ImGui::CreateContext()} {
    ImGui::SetCurrentContext(_context);
    ImGuiIO& settings = io();
    settings.IniFilename = nullptr;
    settings.LogFilename = nullptr;
    settings.DisplaySize = size;
    settings.DeltaTime = 1.0f / 60.0f;
    /* As all renderers of today; without it no window could hold more than 65536 vertices */
    settings.BackendFlags |= ImGuiBackendFlags_RendererHasVtxOffset;
    settings.ClipboardUserData = this;
    settings.GetClipboardTextFn = clipboardText;
    settings.SetClipboardTextFn = setClipboardText;
    /* Each key has its own number for a code */
    for(int key = 0; key != ImGuiKey_COUNT; ++key)
        settings.KeyMap[key] = key;

    unsigned char* pixels;
    int width, height;
    settings.Fonts->GetTexDataAsAlpha8(&pixels, &width, &height);
}

HeadlessFrame::~HeadlessFrame() { ImGui::DestroyContext(_context); }

ImGuiIO& HeadlessFrame::io() const {
    ImGui::SetCurrentContext(_context);
    return ImGui::GetIO();
}

void HeadlessFrame::run(const std::function<void()>& draw) {
    ImGui::SetCurrentContext(_context);
    ImGui::NewFrame();
    draw();
    ImGui::Render();
}

void HeadlessFrame::run(const int count, const std::function<void()>& draw) {
    for(int i = 0; i != count; ++i)
        run(draw);
}

}}
