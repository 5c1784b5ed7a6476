#ifndef Quillmere_editor_PanelEvent_h
#define Quillmere_editor_PanelEvent_h

#include <variant>
#include <vector>

#include "host/Events.h"

namespace QuillmereEngine {

class EditorView;

struct MousePress {
    MouseEvent event;
};

struct MouseRelease {
    MouseEvent event;
};

struct KeyPress {
    KeyEvent event;
};

struct KeyRelease {
    KeyEvent event;
};

/** @brief An input event together with the panel's function that it is meant for */
using PanelEvent =
    std::variant<MouseMoveEvent, MousePress, MouseRelease, MouseScrollEvent, KeyPress, KeyRelease>;

using PanelEvents = std::vector<PanelEvent>;

/** @brief Hand an event to a panel. Gives whether the panel accepted it. */
bool deliver(PanelEvent& event, EditorView& panel);

}

#endif
