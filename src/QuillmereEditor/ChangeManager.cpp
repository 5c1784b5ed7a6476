#include "QuillmereEditor/ChangeManager.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Assert.h>

#include "QuillmereEditor/ChangeObserver.h"
#include "QuillmereEditor/changeLocation.h"
#include "QuillmereEditor/changeNotification.h"
#include "QuillmereEditor/changePath.h"
#include "QuillmereEditor/documentEdit.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr std::size_t ReservedChanges = 64;
constexpr std::size_t HandlerGrowth = 16;

using ValuePointer = Containers::Pointer<rapidjson::Value>;

ValuePointer copied(
    const rapidjson::Value* const value, rapidjson::MemoryPoolAllocator<>& allocator) {
    if(!value)
        return nullptr;
    return ValuePointer{InPlaceInit, RapidJsonUtils::copy(*value, allocator)};
}

Containers::Array<char> copied(const Containers::ArrayView<const char> path) {
    Containers::Array<char> out{NoInit, path.size()};
    std::copy(path.begin(), path.end(), out.begin());
    return out;
}

Containers::Array<char> copied(const char* const path) {
    return copied(Containers::ArrayView<const char>{path, std::strlen(path) + 1});
}

}

ChangeManager::ChangeManager() { arrayReserve(_changes, ReservedChanges); }

ChangeManager::ChangeManager(ProjectFile& project): ChangeManager{} { _project = &project; }

ChangeManager::~ChangeManager() {
    for(ChangeObserver* const observer: _observers)
        observer->_manager = nullptr;
}

void ChangeManager::reset(ProjectFile& project) {
    interrupt();
    _project = &project;
    arrayResize(_changes, std::size_t{0});
    ++_revision;
    _lastChange = -1;
    _isSavedStateKept = _isSavedStateKept && _savedChange == -1;
    _handlers.clear([this](Containers::Pointer<ChangeHandler>&& handler) {
        if(_notification)
            _notification->retire(std::move(handler));
    });
    for(ChangeObserver* const observer: _observers)
        observer->historyReset();
}

rapidjson::MemoryPoolAllocator<>& ChangeManager::allocator() { return project().allocator(); }

ProjectFile& ChangeManager::project() {
    CORRADE_ASSERT(_project, "ChangeManager: there is no project", *_project);
    return *_project;
}

void ChangeManager::pushChange(
    Containers::Array<char>&& path, const rapidjson::Value* const value, const bool merge) {
    const ChangeLocation location{project(), pathText(path)};
    /* What is being undone is nothing to merge into */
    settle();
    const int target = merge ? mergeTarget(location.path()) : -1;
    const rapidjson::Value* const oldValue = target != -1 ? _changes[target].oldValue.get()
                                                          : location.value();
    if(!location.isUsable("ChangeManager::pushChange():", changeKind(oldValue, value)))
        return;

    interrupt();
    /* Before anything is discarded: the value may belong to a change that goes */
    ValuePointer newValue = copied(value, allocator());
    if(target != -1)
        makeNewest(target);
    else
        appendChange(std::move(path), location);

    Change& change = lastChange();
    change.newValue = std::move(newValue);
    change.group = _group;
    apply(location, stepOf(change));
}

void ChangeManager::pushChange(
    const char* const path, const rapidjson::Value& value, const bool merge) {
    CORRADE_ASSERT(path, "ChangeManager::pushChange(): path was nullptr", );
    pushChange(copied(path), &value, merge);
}

void ChangeManager::pushChange(const char* const path, const char* const value, const bool merge) {
    CORRADE_ASSERT(path, "ChangeManager::pushChange(): path was nullptr", );
    pushChange(copied(path), value, merge);
}

void ChangeManager::pushChange(
    Containers::Array<char>&& path, const char* const value, const bool merge) {
    CORRADE_ASSERT(value, "ChangeManager::pushChange(): value was nullptr", );
    /* By reference is enough, the entry gets a copy of its own */
    const rapidjson::Value string{rapidjson::StringRef(value)};
    pushChange(std::move(path), &string, merge);
}

void ChangeManager::pushAppend(const char* const path, const char* const value) {
    CORRADE_ASSERT(path, "ChangeManager::pushAppend(): path was nullptr", );
    CORRADE_ASSERT(value, "ChangeManager::pushAppend(): value was nullptr", );
    /* The array that is pushed is copied anyway, so this one doesn't stay in the document's pool */
    rapidjson::MemoryPoolAllocator<> pool;
    const rapidjson::Value* const present = project().getValue(path, false);
    rapidjson::Value array = present->IsArray() ? RapidJsonUtils::copy(*present, pool)
                                                : rapidjson::Value{rapidjson::kArrayType};
    array.PushBack(rapidjson::StringRef(value), pool);
    pushChange(path, array, false);
}

void ChangeManager::pushRemoval(const char* const path) {
    CORRADE_ASSERT(path, "ChangeManager::pushRemoval(): path was nullptr", );
    pushRemoval(copied(path));
}

void ChangeManager::pushRemoval(Containers::Array<char>&& path) {
    const rapidjson::Value* const nothing = nullptr;
    pushChange(std::move(path), nothing, false);
}

int ChangeManager::mergeTarget(const Containers::StringView path) const {
    /* The first entry is never merged into and so not looked at either */
    for(int i = _lastChange; i >= 1 && _changes[i].group == _group; --i)
        if(pathText(_changes[i].path) == path)
            return i;
    return -1;
}

/* The target becomes the newest, so that it's undone first: its value is the one written last */
void ChangeManager::makeNewest(const int index) {
    if(_savedChange >= index)
        _isSavedStateKept = false;
    if(index != _lastChange) {
        std::swap(_changes[index], _changes[_lastChange]);
        ++_revision;
    }
    _changes[_lastChange].group = _group;
}

void ChangeManager::appendChange(Containers::Array<char>&& path, const ChangeLocation& location) {
    ValuePointer oldValue = copied(location.value(), allocator());
    /* Taken before the history moves, it may be the path of one of its entries */
    Containers::Array<char> ownPath = std::move(path);

    ++_lastChange;
    /* What could be redone started from a state that's left for good now. Appended and not resized,
       which would copy the history each time. */
    arrayRemoveSuffix(_changes, _changes.size() - std::size_t(_lastChange));
    arrayAppend(_changes, InPlaceInit);
    ++_revision;
    /* If that was where the document was saved, no state in the history is the saved one any more */
    if(_savedChange == _lastChange) {
        _savedChange = -1;
        _isSavedStateKept = false;
    }

    Change& change = lastChange();
    change.path = std::move(ownPath);
    change.oldValue = std::move(oldValue);
}

void ChangeManager::applyChange(const Change& change) {
    const Step step = stepOf(change);
    const ChangeLocation location{project(), pathText(step.path)};
    if(location.isUsable("ChangeManager::applyChange():", changeKind(step.oldValue, step.newValue)))
        apply(location, step);
}

ChangeManager::Step ChangeManager::stepOf(const Change& change) {
    return {change.path, change.oldValue.get(), change.newValue.get(), change.group};
}

/* With an index to count down, the step is one of undoing. False if a handler changed the history,
   which ends the undoing and redoing of a group. */
bool ChangeManager::apply(const ChangeLocation& location, const Step& step, int* const undone) {
    writeChange(project(), location, step.oldValue, step.newValue);
    for(ChangeObserver* const observer: _observers)
        observer->changeWritten(location.path(), step.oldValue, step.newValue);

    Notification notification{_notification, undone};
    if(_group < 0)
        notify(step);
    return !notification.isInterrupted();
}

Change ChangeManager::reverse(const Change& change) {
    Change out;
    out.path = copied(Containers::ArrayView<const char>{change.path});
    out.oldValue = copied(change.newValue.get(), allocator());
    out.newValue = copied(change.oldValue.get(), allocator());
    return out;
}

void ChangeManager::undo(const Change& change) {
    interrupt();
    undoStep(change, "ChangeManager::undo():");
}

/* Does what applying the reverse does, without making it: its copies of the values would stay in
   the document's pool. False if the undoing has to end here. */
bool ChangeManager::undoStep(const Change& change, const char* const function) {
    const Step step{change.path, change.newValue.get(), change.oldValue.get(), -1};
    const ChangeLocation location{project(), pathText(step.path)};
    return location.isUsable(function, changeKind(step.oldValue, step.newValue)) &&
        apply(location, step, &_lastChange);
}

void ChangeManager::undoLast() {
    CORRADE_ASSERT(_group == -1,
        "ChangeManager::undoLast(): Can't undo/redo changes in group. Forgot commit()?", );
    interrupt();
    if(_lastChange == -1)
        return;

    /* No group counts as group 0: several changes without a group are undone one by one, as none of
       them has that number */
    const int group = std::max(lastChange().group, 0);
    do {
        if(!undoStep(lastChange(), "ChangeManager::undoLast():"))
            return;
    } while(_lastChange != -1 && lastChange().group == group);
}

bool ChangeManager::redoStep() {
    const Step step = stepOf(_changes[_lastChange + 1]);
    const ChangeLocation location{project(), pathText(step.path)};
    if(!location.isUsable(
           "ChangeManager::redoLastUndo():", changeKind(step.oldValue, step.newValue)))
        return false;
    ++_lastChange;
    return apply(location, step);
}

void ChangeManager::redoLastUndo() {
    CORRADE_ASSERT(_group == -1,
        "ChangeManager::redoLastUndo(): Can't undo/redo changes in group. Forgot commit()?", );
    interrupt();
    if(int(_changes.size()) == _lastChange + 1)
        return;

    const int group = std::max(_changes[_lastChange + 1].group, 0);
    do {
        if(!redoStep())
            return;
    } while(_lastChange + 1 < int(_changes.size()) && _changes[_lastChange + 1].group == group);
}

int ChangeManager::beginGroup() {
    CORRADE_ASSERT(
        _group == -1, "ChangeManager::beginGroup(): a group is already open", _lastGroup);
    interrupt();
    _lastGroup = _lastGroup == INT_MAX ? 1 : _lastGroup + 1;
    return _group = _lastGroup;
}

void ChangeManager::commit() {
    settle();
    const int group = _group;
    _group = -1;
    /* Handlers may have undone changes meanwhile, or dropped all */
    for(int i = _lastChange; i >= 0 && i <= _lastChange && _changes[i].group == group; --i)
        notify(stepOf(_changes[i]));
}

void ChangeManager::markSave() {
    settle();
    _savedChange = _lastChange;
    _isSavedStateKept = true;
}

bool ChangeManager::hasUnsavedChanges() const { return _savedChange != _lastChange; }

Change& ChangeManager::lastChange() {
    /* Tools that sort crash reports match on this text, the place in it included. So it stays as it
       is, whatever line it comes from. */
    CORRADE_ASSERT(_lastChange >= 0 && _lastChange < int(_changes.size()),
        "Assertion _lastChange >= 0 && _lastChange < int(_changes.size()) failed at "
        "src/QuillmereEditor/ChangeManager:336",
        _changes[_lastChange]);
    return _changes[_lastChange];
}

void ChangeManager::addChangeHandler(
    const char* const path, Containers::Pointer<ChangeHandler>&& handler) {
    if(_handlers.size() == _handlers.capacity())
        _handlers.grow(HandlerGrowth);
    _handlers.put(path, std::move(handler));
    _handlers.compile();
}

void ChangeManager::addChangeHandler(const char* const path,
    std::function<void(const Change&, Containers::ArrayView<const std::string>, void*)> function,
    void* const userData) {
    addChangeHandler(path,
        Containers::Pointer<ChangeHandler>{
            new FunctionChangeHandler{std::move(function), userData}});
}

void ChangeManager::addObserver(ChangeObserver& observer) {
    CORRADE_ASSERT(!observer._manager,
        "ChangeManager::addObserver(): the observer observes a manager already", );
    _observers.push_back(&observer);
    observer._manager = this;
}

void ChangeManager::removeObserver(ChangeObserver& observer) {
    CORRADE_ASSERT(observer._manager == this,
        "ChangeManager::removeObserver(): the observer doesn't observe this manager", );
    _observers.erase(std::find(_observers.begin(), _observers.end(), &observer));
    observer._manager = nullptr;
}

}
