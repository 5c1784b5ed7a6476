#ifndef Corrade_PluginManager_pluginModule_h
#define Corrade_PluginManager_pluginModule_h

#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/AbstractManager.h>

namespace Corrade { namespace PluginManager {

/** @brief An open module file and its entry points */
struct PluginModule {
    void* handle = nullptr;
    void (*initializer)() = nullptr;
    void (*finalizer)() = nullptr;
    void* (*instancer)(AbstractManager&, const Containers::StringView&) = nullptr;
};

/**
@brief Open a module file and look at its entry points
@param name         Name of the plugin, for messages
@param path         Path of the file
@param interface    Interface that the module has to have
@param out          Filled on success, left alone otherwise

None of the module but its static constructors, its version and its interface
is run. Prints a message and closes the file if it isn't @ref LoadState::Loaded.
*/
LoadState openPluginModule(Containers::StringView name, const Containers::String& path,
    Containers::StringView interface, PluginModule& out);

}}

#endif
