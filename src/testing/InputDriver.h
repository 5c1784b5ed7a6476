#ifndef Quillmere_testing_InputDriver_h
#define Quillmere_testing_InputDriver_h

#include <functional>

#include <imgui.h>

#include "testing/HeadlessFrame.h"

namespace QuillmereEngine { namespace Testing {

/**
@brief Plays a user in front of a headless interface

Every call that does something runs one frame per step, as a slow user does: a click is a frame with
the button down and one with it up. Positions are in pixels.
*/
class InputDriver {
public:
    /**
    @param frame    Has to outlive the driver
    @param draw     What's drawn in each frame
    */
    explicit InputDriver(HeadlessFrame& frame, std::function<void()> draw);

    /** @brief Frames without a new event */
    void idle(int count = 1);

    void moveTo(const ImVec2& position);
    void press(int button = 0);
    void release(int button = 0);

    /** @brief Move, press, release, and wait so long that it can't become part of a double click */
    void click(const ImVec2& position);
    void doubleClick(const ImVec2& position);

    /** @brief Press at one position, move to the other and release there */
    void drag(const ImVec2& from, const ImVec2& to);

    /** @brief Turn the wheel up by some notches */
    void wheel(float notches);

    /** @brief Hold or let go of modifier keys, as of the next frame */
    void hold(ImGuiKeyModFlags modifiers);

    void keyDown(ImGuiKey key);
    void keyUp(ImGuiKey key);

    /** @brief Press and release a key, with modifiers held meanwhile */
    void type(ImGuiKey key, ImGuiKeyModFlags modifiers = ImGuiKeyModFlags_None);

    /** @brief Enter characters */
    void text(const char* utf8);

private:
    HeadlessFrame& _frame;
    std::function<void()> _draw;
};

}}

#endif
