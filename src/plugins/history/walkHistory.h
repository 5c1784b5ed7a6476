#ifndef Quillmere_plugins_history_walkHistory_h
#define Quillmere_plugins_history_walkHistory_h

#include <cstddef>
#include <string>

namespace QuillmereEngine {

class ChangeManager;

/**
@brief The nearest state that undoing and redoing stops at
@param state    A number of applied changes
@return @p state, or with the rest of the group that it lies in
*/
std::size_t reachableState(const ChangeManager& changes, std::size_t state);

/** @brief The state that undoing stops at next, 0 if there's none before */
std::size_t stateBefore(const ChangeManager& changes, std::size_t state);

/** @brief Whether the history may be undone and redone now: it isn't locked and no group is open */
bool isWalkable(const ChangeManager& changes);

/**
@brief Undo and redo until a number of changes is applied
@param state    See @ref reachableState()
@return Empty if that state was reached, else why not: the history may not be walked now, a change
    was refused, a handler threw or changed the history. Whatever handlers do, it ends.
*/
std::string walkHistory(ChangeManager& changes, std::size_t state);

}

#endif
