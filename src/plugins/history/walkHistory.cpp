#include "plugins/history/walkHistory.h"

#include <algorithm>
#include <exception>

#include "QuillmereEditor/ChangeManager.h"
#include "plugins/history/shortText.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Undoes or redoes once towards a state. Gives what kept it from that. */
std::string step(ChangeManager& changes, const std::size_t state) {
    const std::size_t before = changes.appliedCount();
    const std::size_t revision = changes.revision();
    const bool isUndo = before > state;
    /* The refused one may be another of the group, so it's looked up afterwards */
    const auto describe = [&](const char* const problem) {
        const std::size_t next = changes.appliedCount() - (isUndo ? 1 : 0);
        const std::string path = next < changes.changeCount()
            ? shortPath(pathOf(changes.changes()[next]), 200)
            : std::string{};
        return (isUndo ? "can't undo " : "can't redo ") + path + ": " + problem;
    };
    try {
        if(isUndo)
            changes.undoLast();
        else
            changes.redoLastUndo();
    } catch(const std::exception& error) {
        return std::string{"a handler of the project failed: "} + error.what();
    } catch(...) {
        return "a handler of the project failed";
    }
    if(changes.revision() != revision || !isWalkable(changes))
        return "a handler of the project changed the history";
    const std::size_t after = changes.appliedCount();
    if(isUndo ? after >= before : after <= before)
        return describe("the document has no place for it");
    return {};
}

}

std::size_t reachableState(const ChangeManager& changes, std::size_t state) {
    const Containers::ArrayView<const Change> list = changes.changes();
    state = std::min(state, list.size());
    if(state == 0 || list[state - 1].group < 0)
        return state;
    while(state != list.size() && list[state].group == list[state - 1].group)
        ++state;
    return state;
}

std::size_t stateBefore(const ChangeManager& changes, std::size_t state) {
    const Containers::ArrayView<const Change> list = changes.changes();
    if(state == 0)
        return 0;
    const int group = list[--state].group;
    while(group >= 0 && state != 0 && list[state - 1].group == group)
        --state;
    return state;
}

bool isWalkable(const ChangeManager& changes) {
    return !changes.isLocked() && !changes.isGroupOpen();
}

std::string walkHistory(ChangeManager& changes, const std::size_t state) {
    if(!isWalkable(changes))
        return "the history is in use";
    const std::size_t target = reachableState(changes, state);
    /* Backward first and only then forward, so that a step that goes too far isn't repeated */
    for(const bool isUndo: {true, false})
        while(isUndo ? changes.appliedCount() > target : changes.appliedCount() < target) {
            const std::string problem = step(changes, target);
            if(!problem.empty())
                return problem;
        }
    if(changes.appliedCount() != target)
        return "the change belongs to others that can't be undone without it";
    return {};
}

}
