#include "AbstractManager.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <system_error>
#include <vector>

#include <dlfcn.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/AbstractPlugin.h>
#include <Corrade/PluginManager/PluginMetadata.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <Corrade/Utility/Directory.h>

#include "metadataFile.h"
#include "pluginModule.h"

namespace Corrade { namespace PluginManager {

namespace {

using Utility::Debug;
using Utility::Error;
using Utility::Warning;

std::string executableDirectory() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

/* First of the search paths that's there, empty with a warning if none is */
std::string foundDirectory(const Containers::ArrayView<const Containers::String> searchPaths) {
    CORRADE_ASSERT(!searchPaths.isEmpty(),
        "PluginManager::Manager: either pluginDirectory has to be set or T::pluginSearchPaths() is "
        "expected to have at least one entry",
        {});
    const std::string base = executableDirectory();
    for(const Containers::String& path: searchPaths) {
        const std::string directory = Utility::Directory::join(base, path);
        if(Utility::Directory::isDirectory(directory))
            return directory;
    }
    Warning{} << "PluginManager::Manager: none of the plugin search paths in" << searchPaths
              << "exists and pluginDirectory was not set, skipping plugin discovery";
    return {};
}

/* The views are kept, so they have to be literals */
void expectGlobal(const Containers::StringView view, const char* const function) {
    CORRADE_ASSERT(view.flags() >= Containers::StringViewFlag::Global,
        "PluginManager::AbstractPlugin::" << Debug::nospace << function << Debug::nospace
                                          << "(): returned view is not global:" << view, );
}

Containers::Array<Containers::StringView> toArray(const std::set<Containers::StringView>& sorted) {
    Containers::Array<Containers::StringView> out{ValueInit, sorted.size()};
    std::copy(sorted.begin(), sorted.end(), out.begin());
    return out;
}

}

struct AbstractManager::Plugin {
    explicit Plugin(const Containers::StringView name): metadata{name} {}

    PluginMetadata metadata;
    LoadState state = LoadState::NotLoaded;
    Containers::String path;
    PluginModule module;
    /* Set while dependencies are loaded, to notice a circle of them */
    bool isLoading = false;
    /* In the order they were made in */
    std::vector<AbstractPlugin*> instances;
    /* Those whose metadata say they are used by this one */
    std::vector<Plugin*> dependencies;
};

struct AbstractManager::State {
    Containers::StringView interface, suffix, metadataSuffix;
    std::string directory;
    std::map<std::string, std::unique_ptr<Plugin>> plugins;
    /* Without the names. Whatever provided an alias first keeps it. */
    std::map<std::string, Plugin*> aliases;
};

const int AbstractManager::Version = CORRADE_PLUGIN_VERSION;

AbstractManager::AbstractManager(const Containers::StringView interface,
    Containers::Array<Containers::String>&& searchPaths, const Containers::StringView suffix,
    const Containers::StringView metadataSuffix):
    AbstractManager{interface, foundDirectory(searchPaths), suffix, metadataSuffix} {}

AbstractManager::AbstractManager(const Containers::StringView interface,
    const Containers::StringView directory, const Containers::StringView suffix,
    const Containers::StringView metadataSuffix):
    _state{InPlaceInit} {
    expectGlobal(interface, "pluginInterface");
    expectGlobal(suffix, "pluginSuffix");
    expectGlobal(metadataSuffix, "pluginMetadataSuffix");
    _state->interface = interface;
    _state->suffix = suffix;
    _state->metadataSuffix = metadataSuffix;
    setPluginDirectory(directory);
}

AbstractManager::~AbstractManager() {
    for(const auto& [name, plugin]: _state->plugins) {
        if(plugin->state != LoadState::Loaded)
            continue;
        const LoadState state = unloadPlugin(*plugin);
        CORRADE_ASSERT(state == LoadState::NotLoaded,
            "PluginManager::Manager: cannot unload plugin" << name
                                                           << "on manager destruction:" << state, );
    }
}

Containers::StringView AbstractManager::pluginInterface() const { return _state->interface; }

Containers::StringView AbstractManager::pluginDirectory() const { return _state->directory; }

void AbstractManager::setPluginDirectory(const Containers::StringView directory) {
    _state->directory = std::string(directory);
    reloadPluginDirectory();
}

void AbstractManager::reloadPluginDirectory() {
    for(auto i = _state->plugins.begin(); i != _state->plugins.end();) {
        const Plugin& plugin = *i->second;
        /* An instance made by hand refers to a plugin that isn't loaded */
        if(plugin.state == LoadState::Loaded || !plugin.instances.empty()) {
            ++i;
            continue;
        }
        forgetAliases(plugin);
        i = _state->plugins.erase(i);
    }
    listDirectory();
}

void AbstractManager::listDirectory() {
    using Utility::Directory::Flag;

    if(!Utility::Directory::isDirectory(_state->directory))
        return;
    for(const std::string& file: Utility::Directory::list(_state->directory,
            Flag::SkipDotAndDotDot | Flag::SkipDirectories | Flag::SortAscending)) {
        if(!Containers::StringView{file}.hasSuffix(_state->suffix))
            continue;
        const std::string name = nameOf(file);
        if(!_state->plugins.count(name))
            addPlugin(name, _state->directory);
    }
}

AbstractManager::Plugin& AbstractManager::addPlugin(
    const std::string& name, const std::string& directory) {
    /* A plugin that is known already is filled anew and not replaced, because
       instances may refer to its metadata */
    std::unique_ptr<Plugin>& plugin = _state->plugins[name];
    if(!plugin)
        plugin = std::make_unique<Plugin>(name);
    forgetAliases(*plugin);
    plugin->path = Utility::Directory::join(directory, name + std::string(_state->suffix));
    readMetadata(*plugin, directory);
    for(const Containers::String& alias: plugin->metadata._provides)
        _state->aliases.emplace(alias, plugin.get());
    return *plugin;
}

void AbstractManager::readMetadata(Plugin& plugin, const std::string& directory) {
    MetadataFile file;
    plugin.state = LoadState::NotLoaded;
    if(!_state->metadataSuffix.isEmpty() &&
        !readMetadataFile(
            Utility::Directory::join(directory, plugin.metadata._name + _state->metadataSuffix),
            file)) {
        plugin.state = LoadState::WrongMetadataFile;
        file = {};
    }
    plugin.metadata._depends = std::move(file.depends);
    plugin.metadata._provides = std::move(file.provides);
}

void AbstractManager::forgetAliases(const Plugin& plugin) {
    for(auto i = _state->aliases.begin(); i != _state->aliases.end();)
        i = i->second == &plugin ? _state->aliases.erase(i) : std::next(i);
}

Containers::Array<Containers::StringView> AbstractManager::pluginList() const {
    std::set<Containers::StringView> names;
    for(const auto& plugin: _state->plugins)
        names.emplace(plugin.first);
    return toArray(names);
}

Containers::Array<Containers::StringView> AbstractManager::aliasList() const {
    std::set<Containers::StringView> names;
    for(const auto& plugin: _state->plugins)
        names.emplace(plugin.first);
    for(const auto& alias: _state->aliases)
        names.emplace(alias.first);
    return toArray(names);
}

PluginMetadata* AbstractManager::metadata(const Containers::StringView plugin) {
    Plugin* const found = find(plugin);
    return found ? &found->metadata : nullptr;
}

const PluginMetadata* AbstractManager::metadata(const Containers::StringView plugin) const {
    const Plugin* const found = find(plugin);
    return found ? &found->metadata : nullptr;
}

LoadState AbstractManager::loadState(const Containers::StringView plugin) const {
    const Plugin* const found = find(plugin);
    return found ? found->state : LoadState::NotFound;
}

AbstractManager::Plugin* AbstractManager::find(const Containers::StringView plugin) const {
    const std::string name = plugin;
    const auto found = _state->plugins.find(name);
    if(found != _state->plugins.end())
        return found->second.get();
    const auto alias = _state->aliases.find(name);
    return alias == _state->aliases.end() ? nullptr : alias->second;
}

bool AbstractManager::isFile(const Containers::StringView plugin) const {
    return !_state->suffix.isEmpty() && plugin.hasSuffix(_state->suffix);
}

std::string AbstractManager::nameOf(const Containers::StringView file) const {
    const std::string name = std::filesystem::path(std::string(file)).filename().string();
    return name.substr(0, name.size() - _state->suffix.size());
}

LoadState AbstractManager::load(const Containers::StringView plugin) {
    if(isFile(plugin))
        return loadFile(plugin);
    if(Plugin* const found = find(plugin))
        return loadPlugin(*found);
    Error{} << "PluginManager::Manager::load(): plugin" << plugin
            << "is not static and was not found in" << _state->directory;
    return LoadState::NotFound;
}

LoadState AbstractManager::loadFile(const Containers::StringView file) {
    const std::string name = nameOf(file);
    const auto found = _state->plugins.find(name);
    if(found != _state->plugins.end() && found->second->state == LoadState::Loaded) {
        Error{} << "PluginManager::load():" << name << Debug::nospace << _state->suffix
                << "conflicts with currently loaded plugin of the same name";
        return LoadState::Used;
    }
    return loadPlugin(
        addPlugin(name, std::filesystem::path(std::string(file)).parent_path().string()));
}

LoadState AbstractManager::loadPlugin(Plugin& plugin) {
    if(plugin.state == LoadState::Loaded)
        return LoadState::Loaded;
    const Containers::StringView name = plugin.metadata.name();
    if(plugin.state != LoadState::NotLoaded) {
        Error{} << "PluginManager::Manager::load(): plugin" << name
                << "is not ready to load:" << plugin.state;
        return plugin.state;
    }
    if(!loadDependencies(plugin))
        return LoadState::UnresolvedDependency;

    const LoadState state = openPluginModule(name, plugin.path, _state->interface, plugin.module);
    if(state != LoadState::Loaded) {
        plugin.dependencies.clear();
        return state;
    }
    for(Plugin* const dependency: plugin.dependencies)
        dependency->metadata._usedBy.emplace_back(name);
    plugin.state = LoadState::Loaded;
    plugin.module.initializer();
    return LoadState::Loaded;
}

bool AbstractManager::loadDependencies(Plugin& plugin) {
    plugin.dependencies.clear();
    plugin.isLoading = true;
    for(const Containers::String& name: plugin.metadata._depends) {
        Plugin* const dependency = find(name);
        if(!dependency || dependency->isLoading || loadPlugin(*dependency) != LoadState::Loaded) {
            Error{} << "PluginManager::Manager::load(): unresolved dependency" << name
                    << "of plugin" << plugin.metadata.name();
            plugin.dependencies.clear();
            break;
        }
        plugin.dependencies.push_back(dependency);
    }
    plugin.isLoading = false;
    return plugin.dependencies.size() == plugin.metadata._depends.size();
}

LoadState AbstractManager::unload(const Containers::StringView plugin) {
    if(Plugin* const found = find(plugin))
        return unloadPlugin(*found);
    Error{} << "PluginManager::Manager::unload(): plugin" << plugin << "was not found";
    return LoadState::NotFound;
}

LoadState AbstractManager::unloadPlugin(Plugin& plugin) {
    if(plugin.state != LoadState::Loaded)
        return plugin.state;
    const Containers::StringView name = plugin.metadata.name();
    if(!plugin.metadata.usedBy().isEmpty()) {
        Error{} << "PluginManager::Manager::unload(): plugin" << name
                << "is required by other plugins:" << plugin.metadata.usedBy();
        return LoadState::Required;
    }
    if(!std::all_of(plugin.instances.begin(), plugin.instances.end(),
           [](AbstractPlugin* const instance) { return instance->canBeDeleted(); })) {
        Error{} << "PluginManager::Manager::unload(): plugin" << name
                << "has a live instance which cannot be automatically deleted";
        return LoadState::Used;
    }

    /* Each takes itself off the list */
    while(!plugin.instances.empty())
        delete plugin.instances.back();
    for(Plugin* const dependency: std::exchange(plugin.dependencies, {})) {
        std::vector<Containers::String>& usedBy = dependency->metadata._usedBy;
        usedBy.erase(std::find(usedBy.begin(), usedBy.end(), name));
    }
    plugin.module.finalizer();
    plugin.state = LoadState::NotLoaded;
    if(dlclose(std::exchange(plugin.module, {}).handle) == 0)
        return LoadState::NotLoaded;
    Error{} << "PluginManager::Manager::unload(): cannot unload plugin" << name << Debug::nospace
            << ":" << dlerror();
    return LoadState::UnloadFailed;
}

AbstractPlugin* AbstractManager::instantiateInternal(const Containers::StringView plugin) {
    Plugin* const found = find(plugin);
    CORRADE_ASSERT(found && found->state == LoadState::Loaded,
        "PluginManager::Manager::instantiate(): plugin" << plugin << "is not loaded", nullptr);
    return static_cast<AbstractPlugin*>(found->module.instancer(*this, plugin));
}

AbstractPlugin* AbstractManager::loadAndInstantiateInternal(const Containers::StringView plugin) {
    if(load(plugin) != LoadState::Loaded)
        return nullptr;
    if(!isFile(plugin))
        return instantiateInternal(plugin);
    const std::string name = nameOf(plugin);
    return instantiateInternal(name);
}

const PluginMetadata& AbstractManager::registerInstance(
    const Containers::StringView plugin, AbstractPlugin& instance) {
    Plugin* const found = find(plugin);
    CORRADE_ASSERT(found,
        "PluginManager::AbstractPlugin::AbstractPlugin(): attempt to register instance of plugin "
        "not known to given manager",
        found->metadata);
    found->instances.push_back(&instance);
    return found->metadata;
}

void AbstractManager::unregisterInstance(const PluginMetadata& metadata, AbstractPlugin& instance) {
    std::vector<AbstractPlugin*>& instances = find(metadata.name())->instances;
    instances.erase(std::find(instances.begin(), instances.end(), &instance));
}

}}
