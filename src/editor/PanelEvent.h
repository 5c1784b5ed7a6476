#ifndef Quillmere_editor_PanelEvent_h
#define Quillmere_editor_PanelEvent_h

#include <functional>
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

/** @brief An event together with the panel's function that it is meant for */
using PanelEvent = std::variant<MouseMoveEvent, MousePress, MouseRelease, MouseScrollEvent,
    KeyPress, KeyRelease, ExitEvent>;

using PanelEvents = std::vector<PanelEvent>;

/**
@brief Hand an event to panels one after the other until one accepts it
@param call     Is to call what it's given, which calls the panel. Decides about exceptions: a panel
    that threw hasn't accepted unless it said so before.
@return Whether a panel accepted the event
*/
bool deliver(PanelEvent& event, const std::vector<EditorView*>& panels,
    const std::function<void(EditorView& panel, const std::function<void()>& function)>& call);

}

#endif
