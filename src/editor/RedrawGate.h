#ifndef Quillmere_editor_RedrawGate_h
#define Quillmere_editor_RedrawGate_h

#include <chrono>
#include <cstddef>

namespace QuillmereEngine {

/**
@brief Decides when a frame is to be drawn

After something happened frames are drawn until two in a row look alike: Dear ImGui answers some
input only one or two frames later, and its tabs and scrolling move by themselves. Frames that are
drawn for new lines alone keep a distance, so that a fast feed gets the time, and the lock of the
lines, rather than pictures that nobody can follow.
*/
class RedrawGate {
public:
    using Clock = std::chrono::steady_clock;

    /** Frames after an event, whatever they look like */
    static constexpr int LeastFrames = 3;

    /** Equal frames in a row after which nothing moves by itself: more than one blink of a text
        cursor, which takes 1.2 s in Dear ImGui, at one frame each @ref CursorInterval */
    static constexpr int StillFrames = 8;

    /** Distance of frames while a text cursor may blink */
    static constexpr std::chrono::milliseconds CursorInterval{200};

    /** Least distance of frames for new lines */
    static constexpr std::chrono::milliseconds LineInterval{33};

    /** @brief Something happened that a user waits to see: input, a resize, a new panel */
    void request();

    /** @brief Lines came */
    void requestForLines() { _hasNewLines = true; }

    enum class TextFocus { No, Yes };

    /** @brief Whether a text field has the focus, which may show a cursor that blinks */
    void setTextFocus(TextFocus focus);

    /** @brief Whether a frame is to be drawn now */
    bool isDue(Clock::time_point now) const;

    /** @brief How long nothing is to be drawn if nothing happens, at most @p longest */
    Clock::duration pause(Clock::time_point now, Clock::duration longest) const;

    /**
    @brief A frame was drawn
    @param begin,end    How long it took: it counts into the distance, so that slow frames take
        half of the time at most
    @param look         Hash of what was drawn
    */
    void drawn(Clock::time_point begin, Clock::time_point end, std::size_t look);

private:
    bool mayBlink() const;

    int _framesLeft = LeastFrames;
    bool _hasNewLines = false;
    TextFocus _textFocus = TextFocus::No;
    int _equalFrames = 0;
    std::size_t _look = 0;
    Clock::time_point _lastFrame{}, _nextForLines{};
};

}

#endif
