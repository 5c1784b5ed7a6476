#include "editor/ModuleWatch.h"

namespace QuillmereEngine {

bool ModuleWatch::isDue(const ModuleStamp& stamp, const Clock::time_point now) {
    /* A file that is gone is about to be replaced; the panel stays as it is */
    if(stamp != _seen) {
        _seen = stamp;
        _notBefore = now + SettleTime;
    }
    return stamp.exists() && stamp != _handled && now >= _notBefore;
}

}
