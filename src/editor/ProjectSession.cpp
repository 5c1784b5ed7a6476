#include "editor/ProjectSession.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/ArrayView.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Tools/Log.h"
#include "QuillmereEditor/Tools/System.h"
#include "host/ProjectFile.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

std::string pathOf(const Change& change) {
    /* Its NUL may be missing */
    return {change.path.begin(), std::find(change.path.begin(), change.path.end(), '\0')};
}

}

/* While it lives changes are undone or redone, and so none is merged */
class ProjectSession::Step {
public:
    explicit Step(ProjectSession& session): _session(session) { _session._isStepping = true; }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    /* A handler may throw */
    ~Step() {
        _session._isStepping = false;
        _session.remember();
    }

private:
    ProjectSession& _session;
};

ProjectSession::ProjectSession(ProjectFile& project, ChangeManager& changes, std::string file):
    _project(project),
    _changes(changes),
    _file{std::move(file)} {
    restart();
}

void ProjectSession::restart() {
    _changes.reset(_project);
    /* The first component of every path is empty, so this one hears of every change */
    _changes.addChangeHandler(
        "",
        [](const Change& change, Containers::ArrayView<const std::string>, void* const session) {
            static_cast<ProjectSession*>(session)->changed(change);
        },
        this);
    _changes.markSave();
    _savedCount = 0;
    _isChanged = _isSavedEntryMerged = false;
    remember();
}

void ProjectSession::changed(const Change& change) {
    _isChanged = true;
    /* The changes of a group are told one after the other once all are applied, and merged with each
       other only. While nothing is undone or redone a change that made no entry was merged: into the
       newest one if that has its path, else into one that may be older than the last save. */
    const bool isMerged = !_isStepping && change.group <= 0 &&
        _changes.appliedCount() == _appliedCount;
    if(isMerged && _savedCount != 0 &&
        (_appliedCount <= _savedCount || pathOf(change) != _newestPath))
        _isSavedEntryMerged = true;
    if(!_isStepping)
        remember();
}

void ProjectSession::remember() {
    _appliedCount = _changes.appliedCount();
    _newestPath = _appliedCount ? pathOf(_changes.lastChange()) : std::string{};
}

bool ProjectSession::hasUnsavedChanges() const {
    if(_changes.hasUnsavedChanges())
        return true;
    /* The history's mark doesn't move when an entry is merged into, and one on an entry that was
       discarded is taken for the state before the first change */
    return _isChanged && (_isSavedEntryMerged || _changes.appliedCount() != _savedCount);
}

bool ProjectSession::save() {
    if(_changes.isLocked()) {
        log(LogLevel::Warn, "Not saved, an edit is still going on");
        return false;
    }
    const std::string file = _file.empty()
        ? saveFileDialog("Save project", "project.json", {"Projects", "*.json"})
        : _file;
    if(file.empty())
        return false;
    if(!_project.save(file)) {
        log(LogLevel::Error, ("Can't save " + file).c_str());
        return false;
    }
    log(LogLevel::Info, ("Saved " + file).c_str());
    _file = file;
    _changes.markSave();
    _savedCount = _changes.appliedCount();
    _isChanged = _isSavedEntryMerged = false;
    return true;
}

void ProjectSession::undo() {
    if(_changes.isLocked())
        return;
    const Step step{*this};
    _changes.undoLast();
}

void ProjectSession::redo() {
    if(_changes.isLocked())
        return;
    const Step step{*this};
    _changes.redoLastUndo();
}

std::string ProjectSession::name() const {
    const bool isMarked = hasUnsavedChanges();
    if(_file.empty())
        return isMarked ? "Unnamed*" : "";
    return _file + (isMarked ? "*" : "");
}

std::string ProjectSession::title() const {
    const std::string project = name();
    return project.empty() ? "Quillmere" : project + " \xe2\x80\x93 Quillmere";
}

}
