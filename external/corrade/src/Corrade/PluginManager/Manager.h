#ifndef Corrade_PluginManager_Manager_h
#define Corrade_PluginManager_Manager_h

/** @file
@brief Class @ref Corrade::PluginManager::Manager

Include Manager.hpp, too, where one is used.
*/

#include <Corrade/PluginManager/AbstractManager.h>

namespace Corrade { namespace PluginManager {

/**
@brief Manager of plugins of one interface
@tparam T   Interface, derived from @ref AbstractPlugin
*/
template<class T> class Manager: public AbstractManager {
public:
    /** @brief Plugins of @p pluginDirectory, of none if it isn't there */
    explicit Manager(Containers::StringView pluginDirectory);
    /** @brief Plugins of the first of `T::pluginSearchPaths()` that's there */
    explicit Manager();

    /** @brief New instance of a loaded plugin, owned by the caller. Expects that it's loaded. */
    Containers::Pointer<T> instantiate(Containers::StringView plugin);
    /** @brief New instance, null if the plugin can't be loaded */
    Containers::Pointer<T> loadAndInstantiate(Containers::StringView plugin);
};

}}

#endif
