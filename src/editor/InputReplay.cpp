#include "editor/InputReplay.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <GLFW/glfw3.h>
#include <imgui.h>

namespace QuillmereEngine {

namespace {

using Kind = ReplayEvent::Kind;

unsigned modifierOf(const int key) {
    switch(key) {
        case GLFW_KEY_LEFT_CONTROL:
        case GLFW_KEY_RIGHT_CONTROL:
            return ModifierCtrl;
        case GLFW_KEY_LEFT_SHIFT:
        case GLFW_KEY_RIGHT_SHIFT:
            return ModifierShift;
        case GLFW_KEY_LEFT_ALT:
        case GLFW_KEY_RIGHT_ALT:
            return ModifierAlt;
        case GLFW_KEY_LEFT_SUPER:
        case GLFW_KEY_RIGHT_SUPER:
            return ModifierSuper;
        default:
            return ModifierNone;
    }
}

}

InputReplay::InputReplay(std::vector<ReplayEvent> events): _events{std::move(events)} {}

void InputReplay::apply(const unsigned long frame, ImGuiIO& io, PanelEvents& panels) {
    /* With nothing to replay mouse and keys are the user's */
    if(_events.empty())
        return;
    const std::size_t first = _next;
    while(_next != _events.size() && _events[_next].frame <= frame &&
        !endsWhatBegan(_events[_next], first))
        play(_events[_next++], io, panels);

    /* Every frame, as a back end with a window reads the real mouse every frame */
    if(_hasMouse)
        io.MousePos = {_x, _y};
    std::copy(std::begin(_buttons), std::end(_buttons), io.MouseDown);
    io.KeyCtrl = _modifiers & ModifierCtrl;
    io.KeyShift = _modifiers & ModifierShift;
    io.KeyAlt = _modifiers & ModifierAlt;
    io.KeySuper = _modifiers & ModifierSuper;
}

bool InputReplay::endsWhatBegan(const ReplayEvent& event, const std::size_t first) const {
    Kind opposite;
    switch(event.kind) {
        case Kind::ButtonDown:
            opposite = Kind::ButtonUp;
            break;
        case Kind::ButtonUp:
            opposite = Kind::ButtonDown;
            break;
        case Kind::KeyDown:
            opposite = Kind::KeyUp;
            break;
        case Kind::KeyUp:
            opposite = Kind::KeyDown;
            break;
        default:
            return false;
    }
    return std::any_of(_events.begin() + std::ptrdiff_t(first),
        _events.begin() + std::ptrdiff_t(_next), [&](const ReplayEvent& played) {
            return played.kind == opposite && played.code == event.code;
        });
}

void InputReplay::play(const ReplayEvent& event, ImGuiIO& io, PanelEvents& panels) {
    switch(event.kind) {
        case Kind::Move:
            moveMouse(event, panels);
            break;
        case Kind::ButtonDown:
        case Kind::ButtonUp:
            setButton(event, panels);
            break;
        case Kind::Wheel: {
            io.MouseWheel += event.y;
            MouseScrollEvent scroll;
            scroll.x = _x;
            scroll.y = _y;
            scroll.offsetY = event.y;
            scroll.modifiers = _modifiers;
            panels.push_back(scroll);
            break;
        }
        case Kind::KeyDown:
        case Kind::KeyUp:
            setKey(event, io, panels);
            break;
        case Kind::Text:
            io.AddInputCharactersUTF8(event.text.c_str());
            break;
    }
}

void InputReplay::moveMouse(const ReplayEvent& event, PanelEvents& panels) {
    MouseMoveEvent move;
    move.x = event.x;
    move.y = event.y;
    move.deltaX = _hasMouse ? event.x - _x : 0.0f;
    move.deltaY = _hasMouse ? event.y - _y : 0.0f;
    move.modifiers = _modifiers;
    panels.push_back(move);
    _x = event.x;
    _y = event.y;
    _hasMouse = true;
}

void InputReplay::setButton(const ReplayEvent& event, PanelEvents& panels) {
    _buttons[event.code] = event.kind == Kind::ButtonDown;
    MouseEvent mouse;
    mouse.x = _x;
    mouse.y = _y;
    mouse.button = event.code;
    mouse.modifiers = _modifiers;
    if(event.kind == Kind::ButtonDown)
        panels.push_back(MousePress{mouse});
    else
        panels.push_back(MouseRelease{mouse});
}

void InputReplay::setKey(const ReplayEvent& event, ImGuiIO& io, PanelEvents& panels) {
    const bool isDown = event.kind == Kind::KeyDown;
    KeyEvent key;
    key.key = event.code;
    key.repeated = isDown && io.KeysDown[event.code];
    io.KeysDown[event.code] = isDown;
    _modifiers = isDown ? _modifiers | modifierOf(event.code)
                        : _modifiers & ~modifierOf(event.code);
    key.modifiers = _modifiers;
    if(isDown)
        panels.push_back(KeyPress{key});
    else
        panels.push_back(KeyRelease{key});
}

}
