#include "editor/ProjectJournal.h"

#include <filesystem>
#include <memory>
#include <utility>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Tools/Log.h"
#include "editor/ProjectSession.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

namespace QuillmereEngine {

namespace {

void logLine(const LogLevel level, const std::string& line) { log(level, line.c_str()); }

/* On the journal's thread */
void reportEvent(const JournalEvent event, const std::string& path, const std::string& problem) {
    if(event == JournalEvent::Stopped)
        logLine(LogLevel::Error,
            "The journal " + path + " stopped: " + problem +
                ". Until it goes on, changes that aren't saved don't survive a crash");
    else
        logLine(LogLevel::Info, "The journal " + path + " goes on, with all changes in it");
}

std::string countText(const std::size_t count) {
    return std::to_string(count) + (count == 1 ? " change" : " changes");
}

}

ProjectJournal::ProjectJournal(ProjectFile& project, ChangeManager& changes,
    ProjectSession& session, const std::optional<FileIdentity>& loaded,
    const JournalWriter::Clock::duration syncDelay):
    _project(project),
    _changes(changes),
    _session(session),
    _loaded{loaded},
    _writer{reportEvent, syncDelay},
    _journal{project, changes, _writer},
    _thread{_writer} {
    _session.setJournal(&_journal);
    look();
}

ProjectJournal::~ProjectJournal() { _session.setJournal(nullptr); }

std::string ProjectJournal::projectName() const {
    return _session.file().empty() ? "the new project" : _session.file();
}

void ProjectJournal::look() {
    _found.emplace(journalPath(_session.file()), _loaded);
    const std::string name = "The journal " + _found->path();
    std::string line;
    switch(_found->finding()) {
        case JournalFinding::Changes:
            _question.ask();
            return;
        case JournalFinding::None:
            _found->remove();
            break;
        case JournalFinding::OtherState:
            line = name + " continues another state of " + projectName() + " than there is now";
            break;
        case JournalFinding::Unreadable:
            line = name + " can't be read";
            break;
        case JournalFinding::OtherVersion:
            line = name + " is left alone, its format has the version " + _found->problem();
            break;
        case JournalFinding::InUse:
            line = name +
                " is another editor's, which has the same project open. Of this one no "
                "change that isn't saved survives a crash";
            break;
        case JournalFinding::Failed:
            line = name + " can't be opened: " + _found->problem();
            break;
    }
    if(_found->finding() == JournalFinding::OtherState ||
        _found->finding() == JournalFinding::Unreadable) {
        const std::string path = _found->setAside();
        line += path.empty() ? ", and it can't be renamed" : ", it was renamed to " + path;
    }
    if(!line.empty())
        logLine(LogLevel::Warn, line);
    start();
}

/* Releases what was found first: a journal that stays there is in the way of the new one, and it's
   said as soon as there's something to write */
void ProjectJournal::start() {
    const std::string path = _found->path();
    _found.reset();
    if(!_journal.start(path, _loaded))
        logLine(LogLevel::Warn,
            path.empty()
                ? "There is no folder for a journal"
                : "Changes were made too early for a journal, it begins with the next save");
}

void ProjectJournal::drawQuestion() {
    if(_found)
        answer(_question.draw(projectName(), _found->changeCount()));
}

void ProjectJournal::answer(const RecoveryAnswer answer) {
    switch(answer) {
        case RecoveryAnswer::None:
            return;
        case RecoveryAnswer::Recover:
            return recover();
        case RecoveryAnswer::Discard:
            _found->remove();
            break;
        case RecoveryAnswer::Keep:
            logLine(LogLevel::Info, "The journal " + _found->path() + " is kept");
            break;
    }
    start();
}

void ProjectJournal::recover() {
    /* Its changes continue the document as it was loaded, and not what has become of it since */
    if(_journal.changeCount() != 0) {
        logLine(LogLevel::Error,
            "The journal " + _found->path() + " is kept: " + projectName() +
                " was changed before its changes could be recovered");
        return start();
    }
    const FileIdentity saved = FileIdentity::of(RapidJsonUtils::toPrettyJson(*_project.document));
    _changes.beginGroup();
    const FoundJournal::Applied applied = _found->apply(_project, _changes);
    if(applied.isComplete)
        resume(saved);
    _changes.commit();
    if(!applied.isUndoable)
        _session.setChanged();

    const std::string line = "Recovered " + countText(applied.changeCount) + " of " + projectName();
    if(applied.isComplete) {
        logLine(LogLevel::Info, line);
        return;
    }
    logLine(LogLevel::Error,
        line + ", the rest of the journal " + _found->path() +
            " doesn't fit. It's kept, and the next one begins with the next save");
    start();
}

void ProjectJournal::resume(const FileIdentity& saved) {
    Journal::Earlier earlier{
        _found->path(), nullptr, _found->wholeSize(), _found->chain(), _loaded, saved};
    if(_found->release(earlier.file))
        _journal.resume(std::move(earlier));
    _found.reset();
}

void ProjectJournal::frameDrawn() {
    if(_found || _session.hasUnsavedChanges())
        return;
    if(std::exchange(_comparedCount, _journal.changeCount()) != _journal.changeCount())
        _journal.nothingUnsaved();
}

void ProjectJournal::discard() { _journal.discard(); }

void reportIdleJournal(const std::string& project) {
    const std::string path = journalPath(project);
    std::error_code error;
    if(!path.empty() && std::filesystem::exists(path, error))
        logLine(LogLevel::Warn,
            "Headless, so the journal " + path + " is neither recovered nor deleted");
}

}
