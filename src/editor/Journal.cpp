#include "editor/Journal.h"

#include <filesystem>
#include <utility>

#include "QuillmereEditor/ChangeManager.h"
#include "editor/files.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

FileIdentity identityOf(const ProjectFile& project) {
    return FileIdentity::of(RapidJsonUtils::toPrettyJson(*project.document));
}

}

std::string journalPath(const std::string& project) {
    if(project.empty()) {
        const std::string folder = userDataFolder();
        return folder.empty() ? "" : folder + "/unnamed.journal";
    }
    std::error_code error;
    std::filesystem::path file = std::filesystem::weakly_canonical(project, error);
    if(error)
        file = project;
    return (file.parent_path() / ("." + file.filename().string() + ".journal")).string();
}

Journal::Journal(
    ProjectFile& project, ChangeManager& changes, JournalWriter& writer, Creator creator, Now now):
    _project(project),
    _writer(writer),
    _creator{std::move(creator)},
    _now{std::move(now)} {
    changes.addObserver(*this);
}

bool Journal::start(const std::string& path, const std::optional<FileIdentity>& base) {
    _path = path;
    _base = base;
    _isStarted = !path.empty() && _changeCount == 0;
    if(_isStarted)
        _saved = identityOf(_project);
    return _isStarted;
}

void Journal::resume(Earlier earlier) {
    _path = std::move(earlier.path);
    _base = earlier.base;
    _saved = earlier.saved;
    _chain = earlier.chain;
    _isStarted = _isOpen = true;
    /* A std::function can be copied, so what it holds has to be, too. Once it has given the file away
       it's as good as one that can't open it: the writer keeps the file. */
    auto file = std::make_shared<std::unique_ptr<JournalFile>>(std::move(earlier.file));
    _writer.begin(
        _path, [file](std::string&) { return std::move(*file); }, earlier.size);
}

void Journal::changeWritten(const Containers::StringView path,
    const rapidjson::Value* const oldValue, const rapidjson::Value* const newValue) {
    ++_changeCount;
    if(!_isStarted)
        return;
    _record.clear();
    if(!std::exchange(_isOpen, true))
        begin();
    appendJournalChange(_record, _chain, {path.data(), path.size()}, oldValue, newValue);
    _writer.append(_record, _changeCount, _now());
}

void Journal::begin() {
    const auto create = [creator = _creator, path = _path](
                            std::string& problem) { return creator(path, problem); };
    _writer.begin(_path, create, 0);
    appendJournalBegin(_record, _chain, _base);
}

void Journal::aboutToSave(const std::string& file, const std::string_view text) {
    std::error_code error;
    const std::string absolute = std::filesystem::absolute(file, error).string();
    _announcedPath = journalPath(file);
    _announced = FileIdentity::of(text);
    if(!_isOpen)
        return;
    _record.clear();
    appendJournalSave(_record, _chain, error ? file : absolute, _announced);
    _writer.append(_record, _changeCount, _now());
    _writer.flush(_now());
}

void Journal::saved() {
    remove();
    _path = _announcedPath;
    _base = _saved = _announced;
    _isStarted = true;
}

void Journal::nothingUnsaved() {
    if(_isOpen && identityOf(_project) == _saved)
        remove();
}

void Journal::discard() {
    remove();
    _isStarted = false;
}

void Journal::remove() {
    if(std::exchange(_isOpen, false))
        _writer.remove(_now());
}

}
