#ifndef Corrade_PluginManager_Manager_hpp
#define Corrade_PluginManager_Manager_hpp

/** @file
@brief Bodies of @ref Corrade::PluginManager::Manager
*/

#include <Corrade/PluginManager/AbstractPlugin.h>
#include <Corrade/PluginManager/Manager.h>

namespace Corrade { namespace PluginManager {

template<class T> Manager<T>::Manager(const Containers::StringView pluginDirectory):
    AbstractManager{
        T::pluginInterface(), pluginDirectory, T::pluginSuffix(), T::pluginMetadataSuffix()} {}

template<class T> Manager<T>::Manager():
    AbstractManager{T::pluginInterface(), T::pluginSearchPaths(), T::pluginSuffix(),
        T::pluginMetadataSuffix()} {}

template<class T>
Containers::Pointer<T> Manager<T>::instantiate(const Containers::StringView plugin) {
    return Containers::Pointer<T>{static_cast<T*>(instantiateInternal(plugin))};
}

template<class T>
Containers::Pointer<T> Manager<T>::loadAndInstantiate(const Containers::StringView plugin) {
    return Containers::Pointer<T>{static_cast<T*>(loadAndInstantiateInternal(plugin))};
}

}}

#endif
