#include "editor/RedrawGate.h"

#include <algorithm>

namespace QuillmereEngine {

void RedrawGate::request() {
    _framesLeft = LeastFrames;
    _equalFrames = 0;
}

void RedrawGate::setTextFocus(const TextFocus focus) { _textFocus = focus; }

bool RedrawGate::mayBlink() const {
    return _textFocus == TextFocus::Yes && _equalFrames < StillFrames;
}

bool RedrawGate::isDue(const Clock::time_point now) const {
    return _framesLeft > 0 || (_hasNewLines && now >= _nextForLines) ||
        (mayBlink() && now >= _lastFrame + CursorInterval);
}

RedrawGate::Clock::duration RedrawGate::pause(
    const Clock::time_point now, const Clock::duration longest) const {
    if(isDue(now))
        return {};
    Clock::duration out = longest;
    if(_hasNewLines)
        out = std::min(out, _nextForLines - now);
    if(mayBlink())
        out = std::min(out, _lastFrame + CursorInterval - now);
    return out;
}

void RedrawGate::drawn(
    const Clock::time_point begin, const Clock::time_point end, const std::size_t look) {
    _framesLeft = std::max(_framesLeft - 1, look == _look ? 0 : 1);
    _equalFrames = look == _look ? _equalFrames + 1 : 0;
    _look = look;
    _lastFrame = end;
    _hasNewLines = false;
    _nextForLines = end + std::max<Clock::duration>(end - begin, LineInterval);
}

}
