#include "editor/JournalRecovery.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/ChangeObserver.h"
#include "editor/files.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Whether the history took what it was asked to write */
class Witness: public ChangeObserver {
public:
    explicit Witness(ChangeManager& changes) { changes.addObserver(*this); }

    void changeWritten(
        Containers::StringView, const rapidjson::Value*, const rapidjson::Value*) override {
        ++_count;
    }

    std::size_t count() const { return _count; }

private:
    std::size_t _count = 0;
};

const rapidjson::Value* valueAt(
    const ProjectFile& project, const std::string& path, const std::size_t size) {
    const rapidjson::Pointer pointer{path.c_str(), size};
    return pointer.IsValid() ? pointer.Get(*project.document) : nullptr;
}

/* Whether the history takes the last component for the index of an element */
bool isElement(const std::string& path, const std::size_t slash) {
    const std::size_t begin = slash + (path.compare(slash, 2, "/-") == 0 ? 2 : 1);
    return begin != path.size() && path.find_first_not_of("0123456789", begin) == std::string::npos;
}

/* What becomes of a value that is written as a new one */
enum class Creation {
    Set,    /* It takes the place of what's there */
    Insert, /* It's inserted, also where something is */
    Refused /* There can't be elements, and the history ends the program when it's asked for one */
};

/* The last can't come from what was written into this document, but from bytes that somebody made
   up */
Creation creationAt(const ProjectFile& project, const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if(slash == std::string::npos || !isElement(path, slash))
        return Creation::Set;
    const rapidjson::Value* const parent = valueAt(project, path, slash);
    if(!parent || parent->IsObject())
        return Creation::Set;
    return parent->IsArray() ? Creation::Insert : Creation::Refused;
}

/* Whether the history would write the same if it was asked to record the change. Not so after a merge
   into an entry that made an element: that inserts another one. */
bool isRecordable(
    const JournalRecord& record, const Creation creation, const rapidjson::Value* const present) {
    if(!record.newValue || record.hasOldValue == bool(present))
        return true;
    return present && creation == Creation::Set;
}

bool applyChange(ProjectFile& project, ChangeManager& changes, const JournalRecord& record,
    FoundJournal::Applied& applied) {
    const std::string path{record.path};
    const Creation creation = creationAt(project, path);
    const rapidjson::Value* const present = valueAt(project, path, path.size());
    if(creation == Creation::Refused && !record.hasOldValue && record.newValue)
        return false;

    const Witness witness{changes};
    Change change;
    change.path = Containers::Array<char>{NoInit, path.size() + 1};
    std::copy_n(path.c_str(), path.size() + 1, change.path.begin());
    if(isRecordable(record, creation, present)) {
        changes.pushChange(std::move(change.path), record.newValue, false);
    } else {
        applied.isUndoable = false;
        if(record.hasOldValue)
            change.oldValue.emplace();
        change.newValue.emplace(RapidJsonUtils::copy(*record.newValue, changes.allocator()));
        changes.applyChange(change);
    }
    return witness.count() == 1;
}

}

FoundJournal::FoundJournal(std::string path, std::optional<FileIdentity> project):
    _path{std::move(path)},
    _project{project},
    _finding{find()} {}

JournalFinding FoundJournal::find() {
    if(_path.empty())
        return JournalFinding::None;
    switch(DiskJournalFile::open(_path, _file, _problem)) {
        case DiskJournalFile::Opening::Missing:
            return JournalFinding::None;
        case DiskJournalFile::Opening::Locked:
            return JournalFinding::InUse;
        case DiskJournalFile::Opening::Failed:
            return JournalFinding::Failed;
        case DiskJournalFile::Opening::Opened:
            break;
    }
    return _file->read(_bytes, _problem) ? match() : JournalFinding::Failed;
}

/* The newest state that the file has counts: a save that was announced and failed was followed by
   more changes, and the file may be the same before and after some */
JournalFinding FoundJournal::match() {
    JournalReader reader{_bytes};
    switch(reader.state()) {
        case JournalState::Unbegun:
            return JournalFinding::None;
        case JournalState::OtherVersion:
            _problem = std::to_string(reader.version());
            return JournalFinding::OtherVersion;
        case JournalState::Unreadable:
            return JournalFinding::Unreadable;
        case JournalState::Whole:
            break;
    }
    bool isMatched = reader.base() == _project;
    _firstMissing = reader.offset();
    while(const JournalRecord* const record = reader.next()) {
        if(record->kind == JournalRecord::Kind::Change) {
            ++_changeCount;
        } else if(holds(*record)) {
            isMatched = true;
            _firstMissing = reader.offset();
            _changeCount = 0;
        }
    }
    _wholeSize = reader.offset();
    _chain = reader.chain();
    if(!isMatched)
        return JournalFinding::OtherState;
    return _changeCount ? JournalFinding::Changes : JournalFinding::None;
}

/* A project that had no file is saved in the one that the user chose */
bool FoundJournal::holds(const JournalRecord& save) const {
    if(_project)
        return save.content == *_project;
    std::string problem;
    const std::optional<std::string> text = readWholeFile(std::string{save.path}, problem);
    return text && FileIdentity::of(*text) == save.content;
}

FoundJournal::Applied FoundJournal::apply(ProjectFile& project, ChangeManager& changes) const {
    Applied out;
    JournalReader reader{_bytes};
    while(const JournalRecord* const record = reader.next()) {
        if(record->kind != JournalRecord::Kind::Change || reader.offset() <= _firstMissing)
            continue;
        out.isComplete = applyChange(project, changes, *record, out);
        if(!out.isComplete)
            break;
        ++out.changeCount;
    }
    return out;
}

void FoundJournal::remove() {
    if(_file)
        _file->remove();
    _file = nullptr;
}

std::string FoundJournal::setAside() { return _file ? _file->setAside() : std::string{}; }

bool FoundJournal::release(std::unique_ptr<JournalFile>& file) {
    std::string problem;
    if(!_file || !_file->truncate(_wholeSize, problem))
        return false;
    file = std::move(_file);
    return true;
}

}
