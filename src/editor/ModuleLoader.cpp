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
        load(*entry, ModuleStamp::of(entry->module.path()), now);
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
            hasChanged |= load(*entry, stamp, now);
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

bool ModuleLoader::load(Entry& entry, const ModuleStamp& stamp, const Clock::time_point now) {
    std::string problem;
    const std::optional<ModuleCopy> copy = ModuleCopy::make(entry.module.path(), problem);
    /* Written to while it was copied: what's in the copy may be half of the one and half of the
       other. The next look sees the change. */
    if(ModuleStamp::of(entry.module.path()) != stamp)
        return false;
    if(!copy) {
        if(!std::exchange(entry.isIncompleteReported, true))
            report(entry, problem + ", it's tried again later");
        entry.watch.postpone(now);
        return false;
    }
    entry.isIncompleteReported = false;
    entry.watch.setHandled(stamp);
    const bool isReload = entry.module.panel();
    entry.module.close();
    problem = entry.module.open(*copy);
    entry.hasFailed = !problem.empty();
    if(entry.hasFailed)
        report(entry, problem);
    else if(isReload)
        log(LogLevel::Info, ("Module " + entry.module.name() + " was reloaded").c_str());
    return true;
}

void ModuleLoader::report(const Entry& entry, const std::string& problem) {
    log(LogLevel::Error,
        ("Module " + entry.module.path() + " can't be loaded: " + problem).c_str());
}

std::vector<EditorView*> ModuleLoader::panels() const {
    std::vector<EditorView*> out;
    for(const auto& entry: _entries)
        if(EditorView* const panel = entry->module.panel())
            out.push_back(panel);
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
