#ifndef Quillmere_QuillmereEditor_ChangeObserver_h
#define Quillmere_QuillmereEditor_ChangeObserver_h

#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

namespace QuillmereEngine {

class ChangeManager;

/**
@brief Hears of everything that a @ref ChangeManager writes into its document

In the order in which it's written and each time at once, unlike a @ref ChangeHandler, which hears of
a group's changes when it's closed, the newest first, and not at all of those that a handler before it
made end. What an observer was told, written again in that order into the document that there was when
it began to observe, gives the same document: @ref ChangeManager::applyChange() does that.

Observes one manager at most, and stops with its own end or the manager's, whichever comes first. UI
thread.
*/
class ChangeObserver {
public:
    explicit ChangeObserver() = default;
    ChangeObserver(const ChangeObserver&) = delete;
    ChangeObserver& operator=(const ChangeObserver&) = delete;
    virtual ~ChangeObserver();

    /** @brief Whether it observes a manager, which it doesn't any more when that has gone */
    bool isObserving() const { return _manager; }

    /**
    @brief A value was written, before any handler hears of it
    @param path         JSON pointer, without a NUL in it
    @param oldValue     Null if the value was written as a new one, which inserts into an array. Else
        what the history has as the former value: what stood there may have been another one.
    @param newValue     What stands there now, null if nothing does

    Undoing, redoing and merging are writings as any other. All is the caller's and ends with the
    call. Not to call back into the manager, and not to throw: nobody would tell the handlers.
    */
    virtual void changeWritten(Corrade::Containers::StringView path,
        const rapidjson::Value* oldValue, const rapidjson::Value* newValue);

    /**
    @brief The history began anew, see @ref ChangeManager::reset()

    The handlers are gone; others may be registered here.
    */
    virtual void historyReset();

private:
    friend ChangeManager;

    ChangeManager* _manager = nullptr;
};

}

#endif
