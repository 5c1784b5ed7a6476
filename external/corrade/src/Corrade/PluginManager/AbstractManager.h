#ifndef Corrade_PluginManager_AbstractManager_h
#define Corrade_PluginManager_AbstractManager_h

/** @file
@brief Class @ref Corrade::PluginManager::AbstractManager and the macro that plugins register with
*/

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/PluginManager.h>
#include <Corrade/PluginManager/visibility.h>
#include <Corrade/Utility/Utility.h>
#include <string>

/** @brief Version of the entry points that @ref CORRADE_PLUGIN_REGISTER defines */
#define CORRADE_PLUGIN_VERSION 7

namespace Corrade { namespace PluginManager {

/** @brief State of a plugin, or how loading or unloading it ended */
enum class LoadState : unsigned short {
    NotFound = 1,
    WrongPluginVersion = 2,
    WrongInterfaceVersion = 4,
    WrongMetadataFile = 8,
    UnresolvedDependency = 16,
    LoadFailed = 32,
    Static = 64,
    /** Has the bit of a static one, so that this asks for both */
    Loaded = 128 | 64,
    NotLoaded = 256,
    UnloadFailed = 512,
    /** Not unloaded, as other loaded plugins depend on it */
    Required = 1024,
    /** Not unloaded or replaced, as it's in use */
    Used = 2048
};
typedef Containers::EnumSet<LoadState> LoadStates;
CORRADE_ENUMSET_OPERATORS(LoadStates)

/** @brief Print the name of a state */
CORRADE_PLUGINMANAGER_EXPORT Utility::Debug& operator<<(Utility::Debug& debug, LoadState value);

/**
@brief Loads the plugins of a folder

Base of @ref Manager, independent of the plugin's interface. Names are those of
plugins or aliases. Not thread-safe. What fails prints one message to
@ref Utility::Error.
*/
class CORRADE_PLUGINMANAGER_EXPORT AbstractManager {
public:
    static const int Version;

    AbstractManager(const AbstractManager&) = delete;
    AbstractManager(AbstractManager&&) = delete;
    AbstractManager& operator=(const AbstractManager&) = delete;
    AbstractManager& operator=(AbstractManager&&) = delete;

    Containers::StringView pluginInterface() const;
    Containers::StringView pluginDirectory() const;
    /** @brief Go to another folder. Loaded plugins stay, all others are forgotten. */
    void setPluginDirectory(Containers::StringView directory);
    /** @brief List the folder again. Loaded plugins stay as they are. */
    void reloadPluginDirectory();

    /** @brief Names of all plugins, sorted by bytes */
    Containers::Array<Containers::StringView> pluginList() const;
    /** @brief Names and aliases of all plugins, sorted by bytes */
    Containers::Array<Containers::StringView> aliasList() const;

    /** @brief Metadata of a plugin, null if it isn't known */
    PluginMetadata* metadata(Containers::StringView plugin);
    const PluginMetadata* metadata(Containers::StringView plugin) const;

    LoadState loadState(Containers::StringView plugin) const;
    /** @brief Load a plugin and what it depends on. Takes the path of a plugin file, too. */
    LoadState load(Containers::StringView plugin);
    /** @brief Unload a plugin and delete its instances, if all of them allow that */
    LoadState unload(Containers::StringView plugin);

protected:
    /* Looks for the folder next to the executable */
    explicit AbstractManager(Containers::StringView interface,
        Containers::Array<Containers::String>&& searchPaths, Containers::StringView suffix,
        Containers::StringView metadataSuffix);
    explicit AbstractManager(Containers::StringView interface, Containers::StringView directory,
        Containers::StringView suffix, Containers::StringView metadataSuffix);
    ~AbstractManager();

    AbstractPlugin* instantiateInternal(Containers::StringView plugin);
    AbstractPlugin* loadAndInstantiateInternal(Containers::StringView plugin);

private:
    friend AbstractPlugin;

    struct Plugin;
    struct State;

    void listDirectory();
    Plugin& addPlugin(const std::string& name, const std::string& directory);
    void readMetadata(Plugin& plugin, const std::string& directory);
    void forgetAliases(const Plugin& plugin);
    Plugin* find(Containers::StringView plugin) const;
    bool isFile(Containers::StringView plugin) const;
    std::string nameOf(Containers::StringView file) const;
    LoadState loadFile(Containers::StringView file);
    LoadState loadPlugin(Plugin& plugin);
    bool loadDependencies(Plugin& plugin);
    LoadState unloadPlugin(Plugin& plugin);

    /* Give the metadata that the instance may refer to as long as it lives */
    const PluginMetadata& registerInstance(Containers::StringView plugin, AbstractPlugin& instance);
    void unregisterInstance(const PluginMetadata& metadata, AbstractPlugin& instance);

    Containers::Pointer<State> _state;
};

}}

/**
@brief Entry points of a plugin module
@param name         Name of the plugin, the one of its file
@param className    Plugin class, with a constructor from manager and name
@param interface    Interface string, has to be the one of the manager

At global scope, once a module, with `CORRADE_DYNAMIC_PLUGIN` defined. Expands
to nothing where it isn't, so that the same source can be linked to a test.
*/
#ifdef CORRADE_DYNAMIC_PLUGIN
#define CORRADE_PLUGIN_REGISTER(name, className, interface)                                        \
    extern "C" CORRADE_PLUGIN_EXPORT int pluginVersion();                                          \
    extern "C" CORRADE_PLUGIN_EXPORT const char* pluginInterface();                                \
    extern "C" CORRADE_PLUGIN_EXPORT void* pluginInstancer(                                        \
        Corrade::PluginManager::AbstractManager& manager,                                          \
        const Corrade::Containers::StringView& plugin);                                            \
    extern "C" CORRADE_PLUGIN_EXPORT void pluginInitializer();                                     \
    extern "C" CORRADE_PLUGIN_EXPORT void pluginFinalizer();                                       \
    extern "C" int pluginVersion() { return CORRADE_PLUGIN_VERSION; }                              \
    extern "C" const char* pluginInterface() { return interface; }                                 \
    extern "C" void* pluginInstancer(Corrade::PluginManager::AbstractManager& manager,             \
        const Corrade::Containers::StringView& plugin) {                                           \
        return new className{manager, plugin};                                                     \
    }                                                                                              \
    extern "C" void pluginInitializer() { className::initialize(); }                               \
    extern "C" void pluginFinalizer() { className::finalize(); }
#else
#define CORRADE_PLUGIN_REGISTER(name, className, interface)
#endif

#endif
