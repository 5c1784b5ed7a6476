#ifndef Quillmere_editor_ModuleWatch_h
#define Quillmere_editor_ModuleWatch_h

#include <chrono>

#include "editor/ModuleCopy.h"

namespace QuillmereEngine {

/**
@brief Decides when a module's file is to be read

Looks at stamps only, so that it can be told any time and any file. A linker writes a file in
pieces, so a change counts once the file has been left alone for a while.
*/
class ModuleWatch {
public:
    using Clock = std::chrono::steady_clock;

    /** How long a file has to stay as it is. Linkers pause for a few ms at most. */
    static constexpr std::chrono::milliseconds SettleTime{150};

    /** Pause before a file is read again that was seen half-written and doesn't change */
    static constexpr std::chrono::milliseconds RetryTime{2000};

    /** @brief Whether the file, which looks like @p stamp now, is to be read */
    bool isDue(const ModuleStamp& stamp, Clock::time_point now);

    /** @brief The file of this stamp was used, or is no good. Not due until it changes. */
    void setHandled(const ModuleStamp& stamp) { _handled = stamp; }

    /** @brief The file couldn't be read as a whole. Due after a pause or when it changes. */
    void postpone(Clock::time_point now) { _notBefore = now + RetryTime; }

private:
    ModuleStamp _handled, _seen;
    Clock::time_point _notBefore{};
};

}

#endif
