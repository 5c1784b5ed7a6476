#include "testing/InputDriver.h"

#include <utility>

namespace QuillmereEngine { namespace Testing {

namespace {

const ImVec2 Nowhere{-1000.0f, -1000.0f};

}

InputDriver::InputDriver(HeadlessFrame& frame, std::function<void()> draw):
    _frame{frame},
    _draw{std::move(draw)} {
    _frame.io().MousePos = Nowhere;
}

void InputDriver::idle(const int count) { _frame.run(count, _draw); }

void InputDriver::moveTo(const ImVec2& position) {
    _frame.io().MousePos = position;
    idle();
}

void InputDriver::press(const int button) {
    _frame.io().MouseDown[button] = true;
    idle();
}

void InputDriver::release(const int button) {
    _frame.io().MouseDown[button] = false;
    idle();
}

void InputDriver::click(const ImVec2& position) {
    moveTo(position);
    press();
    release();
    idle(int(_frame.io().MouseDoubleClickTime / _frame.io().DeltaTime) + 2);
}

void InputDriver::doubleClick(const ImVec2& position) {
    moveTo(position);
    press();
    release();
    press();
    release();
}

void InputDriver::drag(const ImVec2& from, const ImVec2& to) {
    moveTo(from);
    press();
    moveTo(to);
    release();
}

void InputDriver::wheel(const float notches) {
    _frame.io().MouseWheel = notches;
    idle();
}

void InputDriver::hold(const ImGuiKeyModFlags modifiers) {
    ImGuiIO& io = _frame.io();
    io.KeyCtrl = modifiers & ImGuiKeyModFlags_Ctrl;
    io.KeyShift = modifiers & ImGuiKeyModFlags_Shift;
    io.KeyAlt = modifiers & ImGuiKeyModFlags_Alt;
    io.KeySuper = modifiers & ImGuiKeyModFlags_Super;
}

void InputDriver::keyDown(const ImGuiKey key) {
    _frame.io().KeysDown[key] = true;
    idle();
}

void InputDriver::keyUp(const ImGuiKey key) {
    _frame.io().KeysDown[key] = false;
    idle();
}

void InputDriver::type(const ImGuiKey key, const ImGuiKeyModFlags modifiers) {
    hold(modifiers);
    keyDown(key);
    keyUp(key);
    hold(ImGuiKeyModFlags_None);
}

void InputDriver::text(const char* const utf8) {
    _frame.io().AddInputCharactersUTF8(utf8);
    idle();
}

}}
