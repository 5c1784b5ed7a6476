#include "editor/ProjectSession.h"

#include <utility>

#include <Corrade/Containers/StringView.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Tools/Log.h"
#include "QuillmereEditor/Tools/System.h"
#include "editor/Journal.h"
#include "host/ProjectFile.h"

using namespace Corrade;

namespace QuillmereEngine {

ProjectSession::ProjectSession(ProjectFile& project, ChangeManager& changes, std::string file):
    _project(project),
    _changes(changes),
    _file{std::move(file)} {
    restart();
}

void ProjectSession::restart() {
    _changes.reset(_project);
    _changes.markSave();
    _isAlwaysChanged = false;
}

bool ProjectSession::hasUnsavedChanges() const {
    if(_isAlwaysChanged)
        return true;
    /* The history's mark doesn't move when an entry is merged into, and one on an entry that was
       discarded is taken for the state before the first change */
    return _changes.hasUnsavedChanges() || !_changes.isSavedStateKept();
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
    const auto announce = [&](const Containers::StringView text) {
        if(_journal)
            _journal->aboutToSave(file, {text.data(), text.size()});
    };
    if(!_project.save(file, announce)) {
        log(LogLevel::Error, ("Can't save " + file).c_str());
        return false;
    }
    log(LogLevel::Info, ("Saved " + file).c_str());
    _file = file;
    if(_journal)
        _journal->saved();
    _changes.markSave();
    _isAlwaysChanged = false;
    return true;
}

/* Neither may happen in the middle of an edit that reserves the history, or of a group */
bool ProjectSession::canStep() const { return !_changes.isLocked() && !_changes.isGroupOpen(); }

void ProjectSession::undo() {
    if(canStep())
        _changes.undoLast();
}

void ProjectSession::redo() {
    if(canStep())
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
