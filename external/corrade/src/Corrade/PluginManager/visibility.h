#ifndef Corrade_PluginManager_visibility_h
#define Corrade_PluginManager_visibility_h

/** @file
@brief Visibility of plugin entry points and of this library
*/

#include <Corrade/Utility/VisibilityMacros.h>

#define CORRADE_PLUGIN_EXPORT CORRADE_VISIBILITY_EXPORT
#define CORRADE_PLUGINMANAGER_EXPORT CORRADE_VISIBILITY_EXPORT

#endif
