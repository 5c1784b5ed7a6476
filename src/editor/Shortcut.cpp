#include "editor/Shortcut.h"

#include <GLFW/glfw3.h>

#include "host/Events.h"

namespace QuillmereEngine {

Shortcut shortcutOf(const KeyEvent& event, const ShortcutKey key) {
    const unsigned held = key == ShortcutKey::Ctrl ? ModifierCtrl : ModifierSuper;
    if(event.key == GLFW_KEY_Z && event.modifiers == (held | ModifierShift))
        return Shortcut::Redo;
    if(event.modifiers != held)
        return Shortcut::None;
    switch(event.key) {
        case GLFW_KEY_Z:
            return Shortcut::Undo;
        case GLFW_KEY_Y:
            return Shortcut::Redo;
        case GLFW_KEY_S:
            return event.repeated ? Shortcut::None : Shortcut::Save;
        case GLFW_KEY_Q:
            return event.repeated ? Shortcut::None : Shortcut::Quit;
        default:
            return Shortcut::None;
    }
}

}
