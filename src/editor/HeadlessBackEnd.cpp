#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GLFW/glfw3.h>
#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

#include "editor/BackEnd.h"

namespace QuillmereEngine {

namespace {

/* Animations run by the frame and not by the clock: the same input gives the same pictures */
constexpr float FrameTime = 1.0f / 60.0f;

class HeadlessBackEnd: public BackEnd {
public:
    explicit HeadlessBackEnd(int width, int height): _width{width}, _height{height} {}
    ~HeadlessBackEnd() override;

    /* Gives why it failed, null if it didn't */
    const char* initialize();

    bool isHeadless() const override { return true; }
    float scale() const override { return 1.0f; }
    bool wait(std::chrono::steady_clock::duration) override { return true; }
    void wakeUp() override {}
    void beginFrame() override;
    PanelEvents takeEvents() override { return {}; }
    /* Swapping would be without effect, as the surface has one buffer only, and so would leave it to
       Mesa when to draw: it keeps all frames until then, half a megabyte each */
    void present() override { glFinish(); }
    bool isCloseRequested() const override { return false; }
    void cancelClose() override {}
    void setTitle(const std::string&) override {}

protected:
    void framebufferSize(int& width, int& height) const override {
        width = _width;
        height = _height;
    }

private:
    const char* createContext();

    int _width, _height;
    EGLDisplay _display = EGL_NO_DISPLAY;
    EGLSurface _surface = EGL_NO_SURFACE;
    EGLContext _context = EGL_NO_CONTEXT;
    bool _hasRenderer = false;
};

/* The replay's key codes are GLFW's */
void mapKeys(ImGuiIO& io) {
    io.KeyMap[ImGuiKey_Tab] = GLFW_KEY_TAB;
    io.KeyMap[ImGuiKey_LeftArrow] = GLFW_KEY_LEFT;
    io.KeyMap[ImGuiKey_RightArrow] = GLFW_KEY_RIGHT;
    io.KeyMap[ImGuiKey_UpArrow] = GLFW_KEY_UP;
    io.KeyMap[ImGuiKey_DownArrow] = GLFW_KEY_DOWN;
    io.KeyMap[ImGuiKey_PageUp] = GLFW_KEY_PAGE_UP;
    io.KeyMap[ImGuiKey_PageDown] = GLFW_KEY_PAGE_DOWN;
    io.KeyMap[ImGuiKey_Home] = GLFW_KEY_HOME;
    io.KeyMap[ImGuiKey_End] = GLFW_KEY_END;
    io.KeyMap[ImGuiKey_Insert] = GLFW_KEY_INSERT;
    io.KeyMap[ImGuiKey_Delete] = GLFW_KEY_DELETE;
    io.KeyMap[ImGuiKey_Backspace] = GLFW_KEY_BACKSPACE;
    io.KeyMap[ImGuiKey_Space] = GLFW_KEY_SPACE;
    io.KeyMap[ImGuiKey_Enter] = GLFW_KEY_ENTER;
    io.KeyMap[ImGuiKey_Escape] = GLFW_KEY_ESCAPE;
    io.KeyMap[ImGuiKey_KeyPadEnter] = GLFW_KEY_KP_ENTER;
    io.KeyMap[ImGuiKey_A] = GLFW_KEY_A;
    io.KeyMap[ImGuiKey_C] = GLFW_KEY_C;
    io.KeyMap[ImGuiKey_V] = GLFW_KEY_V;
    io.KeyMap[ImGuiKey_X] = GLFW_KEY_X;
    io.KeyMap[ImGuiKey_Y] = GLFW_KEY_Y;
    io.KeyMap[ImGuiKey_Z] = GLFW_KEY_Z;
}

HeadlessBackEnd::~HeadlessBackEnd() {
    if(_hasRenderer)
        ImGui_ImplOpenGL3_Shutdown();
    if(_display == EGL_NO_DISPLAY)
        return;
    eglMakeCurrent(_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if(_context != EGL_NO_CONTEXT)
        eglDestroyContext(_display, _context);
    if(_surface != EGL_NO_SURFACE)
        eglDestroySurface(_display, _surface);
    /* The display isn't terminated: Mesa would unload its driver, and what the driver's variables
       point to would be reported as lost memory. It goes with the process. */
    eglReleaseThread();
}

const char* HeadlessBackEnd::createContext() {
    _display = eglGetPlatformDisplay(
        EGL_PLATFORM_SURFACELESS_MESA, reinterpret_cast<void*>(EGL_DEFAULT_DISPLAY), nullptr);
    if(_display == EGL_NO_DISPLAY || !eglInitialize(_display, nullptr, nullptr))
        return "EGL has no surfaceless platform, which comes with Mesa";

    constexpr EGLint ConfigAttributes[]{EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE,
        EGL_OPENGL_BIT, EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8, EGL_ALPHA_SIZE, 8,
        EGL_NONE};
    EGLConfig config;
    EGLint count = 0;
    if(!eglChooseConfig(_display, ConfigAttributes, &config, 1, &count) || !count)
        return "EGL has no configuration with an off-screen buffer";
    const EGLint surfaceAttributes[]{EGL_WIDTH, _width, EGL_HEIGHT, _height, EGL_NONE};
    _surface = eglCreatePbufferSurface(_display, config, surfaceAttributes);
    if(_surface == EGL_NO_SURFACE)
        return "EGL can't make an off-screen buffer of this size";

    constexpr EGLint ContextAttributes[]{EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 2,
        EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT, EGL_NONE};
    eglBindAPI(EGL_OPENGL_API);
    _context = eglCreateContext(_display, config, EGL_NO_CONTEXT, ContextAttributes);
    if(_context == EGL_NO_CONTEXT || !eglMakeCurrent(_display, _surface, _surface, _context))
        return "EGL can't make an OpenGL 3.2 context";
    return nullptr;
}

const char* HeadlessBackEnd::initialize() {
    if(const char* const problem = createContext())
        return problem;
    _hasRenderer = ImGui_ImplOpenGL3_Init("#version 150");
    if(!_hasRenderer)
        return "OpenGL's functions aren't found";

    ImGuiIO& io = ImGui::GetIO();
    io.BackendPlatformName = "quillmere_headless";
    mapKeys(io);
    return nullptr;
}

void HeadlessBackEnd::beginFrame() {
    ImGui_ImplOpenGL3_NewFrame();
    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = {float(_width), float(_height)};
    io.DeltaTime = FrameTime;
}

}

std::unique_ptr<BackEnd> createHeadlessBackEnd(
    const int width, const int height, std::string& problem) {
    auto out = std::make_unique<HeadlessBackEnd>(width, height);
    if(const char* const reason = out->initialize()) {
        problem = reason;
        return {};
    }
    return out;
}

}
