#ifndef Quillmere_testing_HeadlessFrame_h
#define Quillmere_testing_HeadlessFrame_h

#include <functional>
#include <string>

#include <imgui.h>

namespace QuillmereEngine { namespace Testing {

/**
@brief Frames of Dear ImGui without a window and without OpenGL

Owns a context with the built-in font, a fixed step of time and a clipboard of its own. Everything
that's called makes this context the current one, so that a test can have several. What was
drawn is looked at in the draw data, see @ref HeadlessFrameDrawing.h.
*/
class HeadlessFrame {
public:
    /** @brief A context with a display of the given size in pixels */
    explicit HeadlessFrame(const ImVec2& size = {1280.0f, 720.0f});
    HeadlessFrame(const HeadlessFrame&) = delete;
    HeadlessFrame& operator=(const HeadlessFrame&) = delete;
    ~HeadlessFrame();

    /** @brief One frame: `NewFrame()`, what @p draw does, `Render()` */
    void run(const std::function<void()>& draw);

    /** @brief Several frames, for what takes some to settle */
    void run(int count, const std::function<void()>& draw);

    ImGuiContext* context() const { return _context; }
    ImGuiIO& io() const;

    std::string clipboard;
    /** Whether a text was put on the clipboard */
    bool isClipboardSet = false;

private:
    ImGuiContext* _context;
};

}}

#endif
