#ifndef Corrade_PluginManager_AbstractPlugin_h
#define Corrade_PluginManager_AbstractPlugin_h

/** @file
@brief Class @ref Corrade::PluginManager::AbstractPlugin
*/

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/PluginManager.h>
#include <Corrade/PluginManager/visibility.h>

namespace Corrade { namespace PluginManager {

/**
@brief Base of all plugin interfaces

An interface class hides the static functions with its own. It has to be the
first base of a plugin: the manager gets an untyped pointer from the module and
takes it for this class.
*/
class CORRADE_PLUGINMANAGER_EXPORT AbstractPlugin {
public:
    /** @brief Name and version of the interface, a view that's global. Here empty. */
    static Containers::StringView pluginInterface();
    /** @brief Folders to look for plugins in, relative to the executable. Here none. */
    static Containers::Array<Containers::String> pluginSearchPaths();
    /** @brief How names of plugin files end, a view that's global. Here ".so". */
    static Containers::StringView pluginSuffix();
    /** @brief How names of metadata files end, empty for none of them. Here ".conf". */
    static Containers::StringView pluginMetadataSuffix();

    /** @brief Called after the module was loaded. Here empty. */
    static void initialize();
    /** @brief Called before the module is unloaded. Here empty. */
    static void finalize();

    /** @brief An instance that no manager knows */
    explicit AbstractPlugin();
    /** @brief An instance in the books of @p manager, which has to outlive it and to know @p plugin */
    explicit AbstractPlugin(AbstractManager& manager, const Containers::StringView& plugin);

    AbstractPlugin(const AbstractPlugin&) = delete;
    AbstractPlugin(AbstractPlugin&&) = delete;
    virtual ~AbstractPlugin() = 0;
    AbstractPlugin& operator=(const AbstractPlugin&) = delete;
    AbstractPlugin& operator=(AbstractPlugin&&) = delete;

    /** @brief Whether the manager may delete the instance to unload the plugin. Here false. */
    virtual bool canBeDeleted();

    /** @brief Name the instance was asked for with, which may be an alias. Valid as long as it is. */
    Containers::StringView plugin() const;
    /** @brief Metadata of the plugin, null for an instance that no manager knows */
    const PluginMetadata* metadata() const;

private:
    struct State;

    Containers::Pointer<State> _state;
};

}}

#endif
