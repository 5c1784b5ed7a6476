#ifndef Corrade_PluginManager_PluginManager_h
#define Corrade_PluginManager_PluginManager_h

/** @file
@brief Forward declarations for @ref Corrade::PluginManager
*/

namespace Corrade { namespace PluginManager {

class AbstractManager;
class AbstractPlugin;
class PluginMetadata;
template<class> class Manager;

enum class LoadState : unsigned short;

}}

#endif
