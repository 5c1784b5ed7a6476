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
    /** Whether nobody behind the panel shall see it */
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

/** @brief The mouse was moved */
struct MouseMoveEvent: Event {
    /** Where it is now, from the left */
    float x = 0.0f;
    /** From the top */
    float y = 0.0f;
    /** Way to the right since the last event */
    float deltaX = 0.0f;
    /** Way down */
    float deltaY = 0.0f;
    /** Of @ref ModifierFlags */
    unsigned modifiers = ModifierNone;
};

/** @brief A button of the mouse was pressed or released */
struct MouseEvent: Event {
    /** Where the mouse is, from the left */
    float x = 0.0f;
    /** From the top */
    float y = 0.0f;
    /** 0 left, 1 right, 2 middle, as in Dear ImGui */
    int button = 0;
    /** Of @ref ModifierFlags */
    unsigned modifiers = ModifierNone;
};

/** @brief The wheel was turned */
struct MouseScrollEvent: Event {
    /** Where the mouse is, from the left */
    float x = 0.0f;
    /** From the top */
    float y = 0.0f;
    /** To the right, in notches of the wheel */
    float offsetX = 0.0f;
    /** Up */
    float offsetY = 0.0f;
    /** Of @ref ModifierFlags */
    unsigned modifiers = ModifierNone;
};

/** @brief A key was pressed, goes on being held, or was released */
struct KeyEvent: Event {
    /** Key code of GLFW 3 (`GLFW_KEY_*`) */
    int key = 0;
    /** Whether it was pressed before and is held since */
    bool repeated = false;
    /** Of @ref ModifierFlags */
    unsigned modifiers = ModifierNone;
};

/** @brief The user wants to quit; accepting it keeps the editor open */
struct ExitEvent: Event {};

}

#endif
