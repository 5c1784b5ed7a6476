#include "editor/RedrawGate.h"

#include <algorithm>

namespace QuillmereEngine {

bool RedrawGate::isDue(const Clock::time_point now) const {
    return _framesLeft > 0 || (_hasNewLines && now >= _nextForLines);
}

RedrawGate::Clock::duration RedrawGate::pause(
    const Clock::time_point now, const Clock::duration longest) const {
    if(isDue(now))
        return {};
    return _hasNewLines ? std::min(_nextForLines - now, longest) : longest;
}

void RedrawGate::drawn(
    const Clock::time_point begin, const Clock::time_point end, const std::size_t look) {
    _framesLeft = std::max(_framesLeft - 1, look == _look ? 0 : 1);
    _look = look;
    _hasNewLines = false;
    _nextForLines = end + std::max<Clock::duration>(end - begin, LineInterval);
}

}
