#include "editor/ModuleLoader.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "QuillmereEditor/Tools/Log.h"

namespace QuillmereEngine {

namespace {

namespace Fs = std::filesystem;

constexpr const char* ModuleSuffix = ".so";

}

ModuleLoader::ModuleLoader(std::string folder, const PanelHost& host):
    _folder{std::move(folder)},
    _host{host} {}

ModuleLoader::~ModuleLoader() = default;

void ModuleLoader::loadAll(const Clock::time_point now) {
    findFiles();
    for(const auto& entry: _entries)
        load(*entry, ModuleStamp::of(entry->module.path()), now, Occasion::Start);
    if(_entries.empty())
        log(LogLevel::Warn,
            ("No modules in " + _folder + ", they are loaded as soon as they are put there")
                .c_str());
    _nextPoll = now + PollInterval;
}

bool ModuleLoader::poll(const Clock::time_point now) {
    if(now < _nextPoll)
        return false;
    _nextPoll = now + PollInterval;

    findFiles();
    bool hasChanged = false;
    for(const auto& entry: _entries) {
        const ModuleStamp stamp = ModuleStamp::of(entry->module.path());
        if(entry->watch.isDue(stamp, now))
            hasChanged |= load(*entry, stamp, now, Occasion::Change);
    }
    return hasChanged;
}

void ModuleLoader::findFiles() {
    std::error_code error;
    for(Fs::directory_iterator i{_folder, error}, end; !error && i != end; i.increment(error)) {
        const std::string path = i->path().string();
        if(i->path().extension() != ModuleSuffix || !ModuleStamp::of(path).exists())
            continue;
        const auto place = std::lower_bound(_entries.begin(), _entries.end(), path,
            [](const auto& entry, const std::string& key) { return entry->module.path() < key; });
        if(place == _entries.end() || (*place)->module.path() != path)
            _entries.insert(place, std::make_unique<Entry>(path, _host));
    }
}

bool ModuleLoader::load(
    Entry& entry, const ModuleStamp& stamp, const Clock::time_point now, const Occasion occasion) {
    const std::string& path = entry.module.path();
    const ModuleRead read = readModule(path);
    std::string problem = read.problem;
    const std::optional<ModuleCopy> copy = read.state == ModuleRead::State::Good
        ? ModuleCopy::make(path, read.files, problem)
        : std::nullopt;
    /* Exchanged while it was read. The next look sees the change. */
    if(ModuleStamp::of(path) != stamp)
        return false;
    if(!copy && read.state != ModuleRead::State::Unfit) {
        wait(entry, problem, now, occasion);
        return false;
    }
    entry.waitsSince = {};
    entry.isWaitReported = false;
    entry.watch.setHandled(stamp);
    exchange(entry, read, copy, occasion);
    return true;
}

void ModuleLoader::wait(Entry& entry, const std::string& problem, const Clock::time_point now,
    const Occasion occasion) {
    entry.watch.postpone(now);
    if(!entry.waitsSince)
        entry.waitsSince = now;
    const bool isLong = occasion == Occasion::Start || now - *entry.waitsSince >= WaitReportTime;
    if(isLong && !std::exchange(entry.isWaitReported, true))
        log(LogLevel::Warn,
            ("Module " + entry.module.path() + " isn't loaded yet: " + problem +
                "; it's tried again")
                .c_str());
}

void ModuleLoader::exchange(Entry& entry, const ModuleRead& read,
    const std::optional<ModuleCopy>& copy, const Occasion occasion) {
    const bool isReload = entry.module.panel();
    entry.module.close();
    const std::string problem = copy ? entry.module.open(*copy) : read.problem;
    entry.buildType = read.type;
    entry.hasFailed = !problem.empty();
    if(entry.hasFailed)
        log(LogLevel::Error,
            ("Module " + entry.module.path() + " can't be loaded: " + problem).c_str());
    else if(occasion == Occasion::Change)
        log(LogLevel::Info,
            ("Module " + title(entry) + (isReload ? " was reloaded" : " was loaded")).c_str());
}

std::string ModuleLoader::title(const Entry& entry) {
    if(entry.buildType.empty())
        return entry.module.name();
    return entry.module.name() + " (" + entry.buildType + " build)";
}

std::vector<EditorView*> ModuleLoader::panels() const {
    std::vector<EditorView*> out;
    for(const auto& entry: _entries)
        if(EditorView* const panel = entry->module.panel())
            out.push_back(panel);
    return out;
}

std::vector<std::string> ModuleLoader::loadedModules() const {
    std::vector<std::string> out;
    for(const auto& entry: _entries)
        if(entry->module.panel())
            out.push_back(title(*entry));
    return out;
}

std::vector<std::string> ModuleLoader::failedModules() const {
    std::vector<std::string> out;
    for(const auto& entry: _entries)
        if(entry->hasFailed)
            out.push_back(entry->module.name());
    return out;
}

void ModuleLoader::closeFailed(const EditorView* const panel, const std::string& problem) {
    for(const auto& entry: _entries)
        if(entry->module.panel() == panel) {
            entry->module.close();
            entry->hasFailed = true;
            log(LogLevel::Error,
                ("Module " + entry->module.name() + " was closed: " + problem).c_str());
        }
}

}
