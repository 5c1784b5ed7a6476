#ifndef Quillmere_editor_InputReplay_h
#define Quillmere_editor_InputReplay_h

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/PanelEvent.h"

struct ImGuiIO;

namespace QuillmereEngine {

/** @brief One line of a replay file */
struct ReplayEvent {
    enum class Kind { Move, ButtonDown, ButtonUp, Wheel, KeyDown, KeyUp, Text };

    /** Frames drawn before it happens, so 0 is the first frame */
    unsigned long frame = 0;
    Kind kind = Kind::Move;
    /** Position in pixels, or the wheel's notches in @ref y */
    float x = 0.0f, y = 0.0f;
    /** Mouse button as in Dear ImGui, or key as in GLFW */
    int code = 0;
    std::string text;
};

/**
@brief Read a replay file
@param text     One event a line; empty lines and lines that begin with `#` are skipped
@param name     How messages call the file
@return In the order in which they happen: by frame, then as written. Nothing when a line is
    malformed; a line on Corrade's error output tells which and why.
*/
std::optional<std::vector<ReplayEvent>> parseReplay(std::string_view text, const std::string& name);

/**
@brief Plays recorded input into Dear ImGui and to the panels

An event that would end what began in the same frame, such as the release of a button, waits for
the next frame and all behind it do, too: Dear ImGui looks at the state once per frame and would
never see the press.
*/
class InputReplay {
public:
    /** @param events As from @ref parseReplay(), sorted by frame */
    explicit InputReplay(std::vector<ReplayEvent> events);

    /** @brief Whether all events were played */
    bool isFinished() const { return _next == _events.size(); }

    /**
    @brief Play the events of a frame
    @param frame    Frames drawn so far
    @param io       Gets the state of mouse and keys. Call between the back end's and Dear ImGui's
        own `NewFrame()`, as a back end writes the real mouse's state there.
    @param panels   Gets the events that panels see
    */
    void apply(unsigned long frame, ImGuiIO& io, PanelEvents& panels);

private:
    void play(const ReplayEvent& event, ImGuiIO& io, PanelEvents& panels);
    void moveMouse(const ReplayEvent& event, PanelEvents& panels);
    void setButton(const ReplayEvent& event, PanelEvents& panels);
    void setKey(const ReplayEvent& event, ImGuiIO& io, PanelEvents& panels);
    bool endsWhatBegan(const ReplayEvent& event, std::size_t first) const;

    std::vector<ReplayEvent> _events;
    std::size_t _next = 0;
    float _x = 0.0f, _y = 0.0f;
    bool _hasMouse = false;
    bool _buttons[3]{};
    unsigned _modifiers = ModifierNone;
};

}

#endif
