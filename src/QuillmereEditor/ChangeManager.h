#ifndef Quillmere_QuillmereEditor_ChangeManager_h
#define Quillmere_QuillmereEditor_ChangeManager_h

#include <functional>
#include <string>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/Change.h"
#include "QuillmereEditor/ChangeHandler.h"
#include "QuillmereEditor/StaticMap.h"

namespace QuillmereEngine {

class ChangeLocation;
class ChangeObserver;
class ProjectFile;

/**
@brief Undo history of the project document

Every edit is a request to set the value at a JSON pointer. It's recorded with what stood there
before, written into the document, told to the handlers of its path, and can be undone and redone
from then on. A run of edits of one value can be merged into one entry, several edits can be grouped
so that they're undone and redone as one, and a mark remembers which state was saved.

UI thread only. Copies that entries keep lie in the memory pool of the document, which gives nothing
back before the document goes.

@section ChangeManager-paths Paths

A path that isn't a JSON pointer, or in which the index into an array is negative or above
2147483647, is refused: one line on the error output names it, and history and document stay as they
were. So is writing a value where arrays would have to grow to more than there's memory for. A component counts as an index into an array if what it's looked up in is an array, or if
nothing or a plain value is there and creating it would make an array.

Undoing a change restores the document, with exceptions that come from how paths are written to:

-   A removal prunes the containers it leaves empty. They come back as the path says, an object with
    numbers for names as an array and an element of an array as part of the next one. A removed
    member comes back as the last one; of two with the same name only the first is ever found.
-   Undoing a creation prunes, too, also a container that had been empty before. One it created
    directly in the root stays.
-   Nulls that padded an array up to a new element behind its end stay, and so does what was
    inserted through the component `-` or an index with a leading zero, which names no element.
-   An array that a component such as `name` or `01` turned into an object, or a plain value that
    got a child, doesn't come back.
-   A creation in an array inserts once more at each merge and is undone once. A removal in an array
    that is merged into overwrites the element that came next.

@section ChangeManager-handlers What handlers may do

Handlers run after the document has changed. They get copies of the change and its path, so whatever
they do, these stay valid until they return. A handler may

-   push changes, which go on top of the history at once,
-   undo and redo. While a change is being undone it still counts as applied for
    @ref lastChange() and @ref hasUnsavedChanges(), but whatever changes the history or sets the
    save mark takes it as undone already, so what is pushed then comes in its place,
-   register handlers, which hear already of the rest of the change if their component is still to
    come,
-   @ref reset() the history. A handler that is running lives until it has returned, as do all that
    were registered before,
-   throw. The exception reaches the caller, the document and the history have the change (or have
    it undone), and the remaining handlers don't hear of it.

An @ref undoLast() or @ref redoLastUndo() ends after the change during which a handler changed the
history or opened a group: the rest of its group stays as it is. A @ref commit() goes on with what is
still there. A group that a handler opens meanwhile stays open when it's through. Nothing guards
against a handler that answers each change with another one.
*/
class ChangeManager {
public:
    /** @brief A manager without a project, good for @ref reset() only */
    explicit ChangeManager();

    /** @brief Constructor. Keeps the project, which has to live as long or until @ref reset(). */
    explicit ChangeManager(ProjectFile& project);

    ChangeManager(const ChangeManager&) = delete;
    ChangeManager& operator=(const ChangeManager&) = delete;
    ~ChangeManager();

    /**
    @brief Start over with another project
    @param project  Kept, see @ref ChangeManager(ProjectFile&)

    History and handlers go, observers stay. The save mark stays, so that @ref hasUnsavedChanges() is true unless
    there was none, and so does an open group and the count of groups.
    */
    void reset(ProjectFile& project);

    /** @brief Memory pool of the project's document */
    rapidjson::MemoryPoolAllocator<>& allocator();

    /**
    @brief Change a value
    @param path     JSON pointer with its NUL. Taken over, unless the change is merged or refused.
    @param value    Copied. Null removes what stands there. May be a part of the document.
    @param merge    Whether an earlier change of the same path may take the new value instead of
        making a new entry. Only changes of the open group count (of no group, if none is open) and
        only those after which nothing but such changes came. The first entry of the history is
        never merged into.

    Discards what could be redone, unless the change is merged. A merge leaves the save mark as it
    is. While a group is open handlers hear of the change from @ref commit().
    */
    void pushChange(
        Corrade::Containers::Array<char>&& path, const rapidjson::Value* value, bool merge);

    /** @overload */
    void pushChange(const char* path, const rapidjson::Value& value, bool merge);

    /** @brief Set a string */
    void pushChange(const char* path, const char* value, bool merge);

    /** @overload */
    void pushChange(Corrade::Containers::Array<char>&& path, const char* value, bool merge);

    /**
    @brief Append a string to an array

    Anything else at @p path becomes an array with just the string. The history has the whole array
    before and after.
    */
    void pushAppend(const char* path, const char* value);

    /** @brief Remove a value and the containers it leaves empty, but none directly in the root */
    void pushRemoval(const char* path);

    /** @overload */
    void pushRemoval(Corrade::Containers::Array<char>&& path);

    /**
    @brief Write a change into the document and tell the handlers

    Doesn't record it. Handlers aren't told while a group is open. An array element is created by
    inserting it; in anything else a component that is a number is the name of a member. Expects
    that nothing but an array or an object, or nothing at all, stands where an element is to be
    created.
    */
    void applyChange(const Change& change);

    /** @brief The change that takes back another. Not in a group. */
    Change reverse(const Change& change);

    /**
    @brief Apply the reverse of a change and count the newest applied change as undone

    Whichever change it is: see @ref undoLast() for what keeps the order. With no change applied
    there's nothing to count.
    */
    void undo(const Change& change);

    /**
    @brief Undo the newest applied change and the rest of its group

    Does nothing if there's none. Expects that no group is open. A change without a group takes
    along what comes directly before it with the group 0; @ref beginGroup() doesn't give that
    number to any.

    Where the document, changed by other means or by pruning, makes the path of the change an unusable
    one, it's refused as @ref pushChange() refuses it. The change stays the newest applied one, of a
    group with all that came before it, and what the group had after it is undone already. Each
    further call is refused the same way until the document has a place for the change again: older
    changes aren't undone before it, as they'd meet a document they weren't made in. Pushing goes
    on, and @ref reset() starts over.
    */
    void undoLast();

    /**
    @brief Redo the oldest undone change and the rest of its group, as @ref undoLast() undoes

    A change whose path is unusable now stays the oldest undone one, of a group with all that comes
    after it. Each further call is refused the same way until the document has a place for the
    change again; pushing another one discards it.
    */
    void redoLastUndo();

    /**
    @brief Open a group
    @return Its number, 1 for the first one and then counted up

    Expects that none is open. Until @ref commit() changes belong to it, handlers hear of none of
    them, and nothing can be undone or redone.
    */
    int beginGroup();

    /**
    @brief Close the group and tell the handlers of its changes, the newest first

    The group is closed before the first handler runs: one may open the next group, which is none of
    this one's, and after one that throws there's nothing to commit again. The handlers of the
    remaining changes aren't told then.

    Without an open group they're told again of all changes back to the nearest one with a group.
    */
    void commit();

    /** @brief Remember the present state as the saved one */
    void markSave();

    /** @brief Whether the present state isn't the one of @ref markSave() */
    bool hasUnsavedChanges() const;

    /** @brief The newest applied change. Expects that there's one. */
    Change& lastChange();

    /** @brief Number of changes in the history, the undone ones included */
    std::size_t changeCount() const { return _changes.size(); }

    /** @brief Number of changes in the history that aren't undone. One that's being undone still
        counts. */
    std::size_t appliedCount() const { return std::size_t(_lastChange + 1); }

    /**
    @brief The history, oldest change first, the undone ones included
    @return Valid until the history changes in any way
    */
    Corrade::Containers::ArrayView<const Change> changes() const { return _changes; }

    /**
    @brief With how many applied changes @ref hasUnsavedChanges() is false

    0 without a mark and after a new change has come in the place of the marked one.
    */
    std::size_t savedCount() const { return std::size_t(_savedChange + 1); }

    /**
    @brief Whether the state after @ref savedCount() changes is the one that was there at
        @ref markSave()

    It isn't any more once another change has come in place of the marked one, one before or at the
    mark was merged into, or a marked history was dropped. A history without a mark counts as saved
    before its first change.
    */
    bool isSavedStateKept() const { return _isSavedStateKept; }

    /**
    @brief Counts up by one each time @ref changes() gets another order or other paths

    That's when a change is appended, whether or not it discards undone ones, when a merge moves an
    entry to the end, and on @ref reset(). Undoing, redoing and merging into the newest entry leave
    it. So from one look at the history to the next only changes were appended if this has grown by
    as much as @ref changeCount().
    */
    std::size_t revision() const { return _revision; }

    /** @brief Whether a group is open, so that nothing can be undone or redone */
    bool isGroupOpen() const { return _group != -1; }

    /**
    @brief Reserve the history for an edit that goes on over several frames, or let go of it

    For those who edit, undo and redo for the user, who are to leave the history alone meanwhile.
    The manager itself takes whatever it's told. @ref reset() changes nothing about it.
    */
    void setLocked(bool isLocked) { _isLocked = isLocked; }

    /** @brief Whether the history is reserved, at first it's not */
    bool isLocked() const { return _isLocked; }

    /**
    @brief Register a handler
    @param path     One component of a path, of anywhere in it: "objects" hears of changes to
        `/objects`, `/objects/3/name` and `/scene/objects` and, if it occurs twice in one, hears of
        that twice. Not copied, a literal in practice, and not from a module that may be closed.
    @param handler  Destroyed with the manager or by @ref reset()

    Of several handlers for the same component only one is ever called, which one is open.
    */
    void addChangeHandler(const char* path, Corrade::Containers::Pointer<ChangeHandler>&& handler);

    /** @brief Register a function, see @ref FunctionChangeHandler */
    void addChangeHandler(const char* path,
        std::function<void(const Change&, Corrade::Containers::ArrayView<const std::string>, void*)>
            function,
        void* userData);

    /** @brief Let an observer hear of all that's written from now on. Expects that it observes no
        manager. */
    void addObserver(ChangeObserver& observer);

    /** @brief Let an observer hear of nothing any more. Expects that it observes this manager. */
    void removeObserver(ChangeObserver& observer);

private:
    struct Step;
    class Notification;

    ProjectFile& project();
    int mergeTarget(Corrade::Containers::StringView path) const;
    void makeNewest(int index);
    void appendChange(Corrade::Containers::Array<char>&& path, const ChangeLocation& location);
    static Step stepOf(const Change& change);
    bool apply(const ChangeLocation& location, const Step& step, int* undone = nullptr);
    bool undoStep(const Change& change, const char* function);
    bool redoStep();
    void settle();
    void interrupt();
    void notify(const Step& step);
    bool hasHandlerFor(Corrade::Containers::ArrayView<const char> path);

    /* Index of the newest applied change, -1 if there's none. What comes after it is undone. */
    int _lastChange = -1;
    /* What _lastChange was at the last save, -1 if that state can't be reached any more */
    int _savedChange = -1;
    /* The open group, -1 if there's none */
    int _group = -1;
    /* What handlers are running for, innermost first, null if none is */
    Notification* _notification = nullptr;
    /* Number of the group opened last */
    int _lastGroup = 0;
    bool _isLocked = false;
    bool _isSavedStateKept = true;
    std::size_t _revision = 0;
    ProjectFile* _project = nullptr;
    Corrade::Containers::Array<Change> _changes;
    StaticMap<Corrade::Containers::Pointer<ChangeHandler>> _handlers;
    /* In the order in which they came */
    std::vector<ChangeObserver*> _observers;
};

}

#endif
