#include <algorithm>
#include <atomic>
#include <utility>

#include <GLFW/glfw3.h>
#include <backends/imgui_impl_glfw.h>
#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

#include "editor/BackEnd.h"

namespace QuillmereEngine {

namespace {

class WindowBackEnd: public BackEnd {
public:
    ~WindowBackEnd() override;

    /* Gives why it failed, empty if it didn't */
    std::string initialize(int width, int height);

    bool isHeadless() const override { return false; }
    float scale() const override { return _scale; }
    bool wait(std::chrono::steady_clock::duration longest) override;
    void wakeUp() override;
    void beginFrame() override;
    PanelEvents takeEvents() override { return std::exchange(_events, {}); }
    void present() override { glfwSwapBuffers(_window); }
    bool isCloseRequested() const override { return glfwWindowShouldClose(_window); }
    void cancelClose() override { glfwSetWindowShouldClose(_window, GLFW_FALSE); }
    void setTitle(const std::string& title) override { glfwSetWindowTitle(_window, title.c_str()); }

protected:
    void framebufferSize(int& width, int& height) const override {
        glfwGetFramebufferSize(_window, &width, &height);
    }

private:
    static WindowBackEnd& of(GLFWwindow* window);
    void installCallbacks();
    void moved(double x, double y);
    void buttonChanged(int button, int action, int modifiers);
    void scrolled(double x, double y);
    void keyChanged(int key, int action, int modifiers);
    float coordinateScale() const;
    unsigned modifiers() const;

    GLFWwindow* _window = nullptr;
    bool _isInitialized = false;
    bool _hasInputSource = false;
    bool _hasRenderer = false;
    float _scale = 1.0f;
    float _x = 0.0f, _y = 0.0f;
    bool _hasInput = false;
    std::atomic<bool> _isWoken{false};
    PanelEvents _events;
};

std::string lastProblem() {
    const char* description = nullptr;
    glfwGetError(&description);
    return description ? description : "unknown reason";
}

unsigned modifiersOf(const int glfw) {
    return (glfw & GLFW_MOD_CONTROL ? ModifierCtrl : 0u) |
        (glfw & GLFW_MOD_SHIFT ? ModifierShift : 0u) | (glfw & GLFW_MOD_ALT ? ModifierAlt : 0u) |
        (glfw & GLFW_MOD_SUPER ? ModifierSuper : 0u);
}

WindowBackEnd::~WindowBackEnd() {
    if(_hasRenderer)
        ImGui_ImplOpenGL3_Shutdown();
    if(_hasInputSource)
        ImGui_ImplGlfw_Shutdown();
    if(_window)
        glfwDestroyWindow(_window);
    if(_isInitialized)
        glfwTerminate();
}

std::string WindowBackEnd::initialize(const int width, const int height) {
    _isInitialized = glfwInit();
    if(!_isInitialized)
        return lastProblem();
    glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 3);
    glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 2);
    glfwWindowHint(GLFW_OPENGL_PROFILE, GLFW_OPENGL_CORE_PROFILE);
    glfwWindowHint(GLFW_OPENGL_FORWARD_COMPAT, GLFW_TRUE);
    glfwWindowHint(GLFW_SCALE_TO_MONITOR, GLFW_TRUE);
    _window = glfwCreateWindow(width, height, "Quillmere", nullptr, nullptr);
    if(!_window)
        return lastProblem();

    glfwMakeContextCurrent(_window);
    glfwSwapInterval(1);
    glfwGetWindowContentScale(_window, &_scale, nullptr);
    /* Before Dear ImGui's, which then call these, too */
    installCallbacks();
    _hasInputSource = ImGui_ImplGlfw_InitForOpenGL(_window, true);
    _hasRenderer = ImGui_ImplOpenGL3_Init("#version 150");
    return _hasRenderer ? "" : "OpenGL's functions aren't found";
}

WindowBackEnd& WindowBackEnd::of(GLFWwindow* const window) {
    auto& out = *static_cast<WindowBackEnd*>(glfwGetWindowUserPointer(window));
    out._hasInput = true;
    return out;
}

void WindowBackEnd::installCallbacks() {
    glfwSetWindowUserPointer(_window, this);
    glfwSetCursorPosCallback(_window,
        [](GLFWwindow* const window, const double x, const double y) { of(window).moved(x, y); });
    glfwSetMouseButtonCallback(_window,
        [](GLFWwindow* const window, const int button, const int action, const int modifiers) {
            of(window).buttonChanged(button, action, modifiers);
        });
    glfwSetScrollCallback(_window, [](GLFWwindow* const window, const double x, const double y) {
        of(window).scrolled(x, y);
    });
    glfwSetKeyCallback(_window,
        [](GLFWwindow* const window, const int key, int, const int action, const int modifiers) {
            of(window).keyChanged(key, action, modifiers);
        });
    glfwSetWindowContentScaleCallback(
        _window, [](GLFWwindow* const window, const float x, float) { of(window)._scale = x; });
    glfwSetCharCallback(_window, [](GLFWwindow* const window, unsigned) { of(window); });
    glfwSetCursorEnterCallback(_window, [](GLFWwindow* const window, int) { of(window); });
    glfwSetFramebufferSizeCallback(_window, [](GLFWwindow* const window, int, int) { of(window); });
    glfwSetWindowCloseCallback(_window, [](GLFWwindow* const window) { of(window); });
    glfwSetWindowFocusCallback(_window, [](GLFWwindow* const window, int) { of(window); });
    glfwSetWindowRefreshCallback(_window, [](GLFWwindow* const window) { of(window); });
}

bool WindowBackEnd::wait(const std::chrono::steady_clock::duration longest) {
    const double seconds = std::chrono::duration<double>(longest).count();
    if(seconds > 0.0 && !_isWoken)
        glfwWaitEventsTimeout(seconds);
    else
        glfwPollEvents();
    _isWoken = false;
    return std::exchange(_hasInput, false);
}

void WindowBackEnd::wakeUp() {
    /* One event is enough for any number of lines */
    if(!_isWoken.exchange(true))
        glfwPostEmptyEvent();
}

/* Pixels of the screen are also what GLFW counts in, but for systems that scale by themselves,
   where the window is measured in the interface's pixels already */
float WindowBackEnd::coordinateScale() const {
    int windowWidth, framebufferWidth;
    glfwGetWindowSize(_window, &windowWidth, nullptr);
    glfwGetFramebufferSize(_window, &framebufferWidth, nullptr);
    return windowWidth > 0 ? _scale * float(windowWidth) / float(std::max(framebufferWidth, 1))
                           : _scale;
}

/* The interface keeps its size in a scaled display: Dear ImGui counts in the interface's pixels
   and only the renderer and the font atlas in the screen's */
void WindowBackEnd::beginFrame() {
    ImGui_ImplOpenGL3_NewFrame();
    ImGui_ImplGlfw_NewFrame();

    int width, height;
    framebufferSize(width, height);
    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = {float(width) / _scale, float(height) / _scale};
    io.DisplayFramebufferScale = {_scale, _scale};
    if(ImGui::IsMousePosValid(&io.MousePos))
        io.MousePos = {io.MousePos.x / coordinateScale(), io.MousePos.y / coordinateScale()};
}

void WindowBackEnd::moved(const double x, const double y) {
    MouseMoveEvent event;
    event.x = float(x) / coordinateScale();
    event.y = float(y) / coordinateScale();
    event.deltaX = event.x - std::exchange(_x, event.x);
    event.deltaY = event.y - std::exchange(_y, event.y);
    event.modifiers = modifiers();
    _events.push_back(event);
}

void WindowBackEnd::buttonChanged(const int button, const int action, const int modifiers) {
    MouseEvent event;
    event.x = _x;
    event.y = _y;
    event.button = button;
    event.modifiers = modifiersOf(modifiers);
    if(action == GLFW_PRESS)
        _events.push_back(MousePress{event});
    else
        _events.push_back(MouseRelease{event});
}

void WindowBackEnd::scrolled(const double x, const double y) {
    MouseScrollEvent event;
    event.x = _x;
    event.y = _y;
    event.offsetX = float(x);
    event.offsetY = float(y);
    event.modifiers = modifiers();
    _events.push_back(event);
}

void WindowBackEnd::keyChanged(const int key, const int action, const int modifiers) {
    KeyEvent event;
    event.key = key;
    event.repeated = action == GLFW_REPEAT;
    event.modifiers = modifiersOf(modifiers);
    if(action == GLFW_RELEASE)
        _events.push_back(KeyRelease{event});
    else
        _events.push_back(KeyPress{event});
}

unsigned WindowBackEnd::modifiers() const {
    const auto isHeld = [this](const int left, const int right) {
        return glfwGetKey(_window, left) == GLFW_PRESS || glfwGetKey(_window, right) == GLFW_PRESS;
    };
    return (isHeld(GLFW_KEY_LEFT_CONTROL, GLFW_KEY_RIGHT_CONTROL) ? ModifierCtrl : 0u) |
        (isHeld(GLFW_KEY_LEFT_SHIFT, GLFW_KEY_RIGHT_SHIFT) ? ModifierShift : 0u) |
        (isHeld(GLFW_KEY_LEFT_ALT, GLFW_KEY_RIGHT_ALT) ? ModifierAlt : 0u) |
        (isHeld(GLFW_KEY_LEFT_SUPER, GLFW_KEY_RIGHT_SUPER) ? ModifierSuper : 0u);
}

}

std::unique_ptr<BackEnd> createWindowBackEnd(
    const int width, const int height, std::string& problem) {
    auto out = std::make_unique<WindowBackEnd>();
    problem = out->initialize(width, height);
    return problem.empty() ? std::move(out) : nullptr;
}

}
