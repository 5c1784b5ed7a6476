#ifndef Quillmere_QuillmereEditor_changeNotification_h
#define Quillmere_QuillmereEditor_changeNotification_h

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Pointer.h>

#include "QuillmereEditor/Change.h"
#include "QuillmereEditor/ChangeHandler.h"
#include "QuillmereEditor/ChangeManager.h"

namespace QuillmereEngine {

/** @brief A change as the handlers are to hear of it, referring to what it's made of */
struct ChangeManager::Step {
    Corrade::Containers::ArrayView<const char> path;
    const rapidjson::Value* oldValue;
    const rapidjson::Value* newValue;
    int group;
};

/**
@brief Handlers are running

On the stack of what runs them, and in the manager's list of all that do. What a handler calls finds
here what it has to take care of.
*/
class ChangeManager::Notification {
public:
    /**
    @brief Constructor
    @param innermost    Head of the list, at which it lives until it's destroyed
    @param undone       Index of the newest applied change if that is being undone: counted down when
        the handlers are through, or earlier with @ref settle(). Null otherwise.
    */
    explicit Notification(Notification*& innermost, int* undone):
        _innermost(innermost),
        _outer{innermost},
        _undone{undone} {
        innermost = this;
    }

    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;

    ~Notification() {
        settle();
        _innermost = _outer;
    }

    Notification* outer() { return _outer; }

    /** @brief Make the newest applied change an undone one, if that's still to be done */
    void settle() {
        if(_undone && *_undone >= 0)
            --*_undone;
        _undone = nullptr;
    }

    void interrupt() { _interrupted = true; }

    /** @brief Whether a handler changed the history */
    bool isInterrupted() const { return _interrupted; }

    /** @brief Keep a handler that may be running until all have returned */
    void retire(Corrade::Containers::Pointer<ChangeHandler>&& handler) {
        if(_outer)
            _outer->retire(std::move(handler));
        else
            _retired.push_back(std::move(handler));
    }

private:
    Notification*& _innermost;
    Notification* _outer;
    int* _undone;
    bool _interrupted = false;
    std::vector<Corrade::Containers::Pointer<ChangeHandler>> _retired;
};

}

#endif
