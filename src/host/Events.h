#ifndef Quillmere_host_Events_h
#define Quillmere_host_Events_h

/** @file
@brief Input and exit events that the host hands to its panels

Positions are in pixels from the upper left corner of the window's content. A panel marks an event
as accepted when nobody behind it shall see it.
*/

namespace QuillmereEngine {

/** @brief Base of the events */
struct Event {
    bool accepted = false;
};

/** @brief Keys held during an event, or-ed together */
enum ModifierFlags : unsigned {
    ModifierNone = 0,
    ModifierCtrl = 1 << 0,
    ModifierShift = 1 << 1,
    ModifierAlt = 1 << 2,
    ModifierSuper = 1 << 3
};

struct MouseMoveEvent: Event {
    float x = 0.0f, y = 0.0f;
    /** Way since the last event */
    float deltaX = 0.0f, deltaY = 0.0f;
    unsigned modifiers = ModifierNone;
};

struct MouseEvent: Event {
    float x = 0.0f, y = 0.0f;
    /** 0 left, 1 right, 2 middle, as in Dear ImGui */
    int button = 0;
    unsigned modifiers = ModifierNone;
};

struct MouseScrollEvent: Event {
    float x = 0.0f, y = 0.0f;
    /** In wheel notches, up and right positive */
    float offsetX = 0.0f, offsetY = 0.0f;
    unsigned modifiers = ModifierNone;
};

struct KeyEvent: Event {
    /** Key code of GLFW 3 (`GLFW_KEY_*`) */
    int key = 0;
    bool repeated = false;
    unsigned modifiers = ModifierNone;
};

/** @brief The user wants to quit; accepting it keeps the editor open */
struct ExitEvent: Event {};

}

#endif
