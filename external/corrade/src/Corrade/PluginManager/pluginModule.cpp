#include "pluginModule.h"

#include <dlfcn.h>

#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Utility/Debug.h>

namespace Corrade { namespace PluginManager {

namespace {

using Utility::Debug;
using Utility::Error;

/* Null, with a message that says what it's needed for, if there is none */
template<class F> F findSymbol(void* const handle, const char* const symbol, const char* const what,
    const Containers::StringView name) {
    const F function = reinterpret_cast<F>(dlsym(handle, symbol));
    if(!function)
        Error{} << "PluginManager::Manager::load(): cannot get" << what << "of plugin" << name
                << Debug::nospace << ":" << dlerror();
    return function;
}

LoadState checkVersion(void* const handle, const Containers::StringView name) {
    const auto version = findSymbol<int (*)()>(handle, "pluginVersion", "version", name);
    if(!version)
        return LoadState::LoadFailed;
    const int found = version();
    if(found == AbstractManager::Version)
        return LoadState::Loaded;
    Error{} << "PluginManager::Manager::load(): wrong version of plugin" << name << Debug::nospace
            << ", expected" << AbstractManager::Version << "but got" << found;
    return LoadState::WrongPluginVersion;
}

LoadState checkInterface(
    void* const handle, const Containers::StringView name, const Containers::StringView expected) {
    const auto interface = findSymbol<const char* (*)()>(
        handle, "pluginInterface", "interface string", name);
    if(!interface)
        return LoadState::LoadFailed;
    const Containers::StringView found = interface();
    if(found == expected)
        return LoadState::Loaded;
    Error{} << "PluginManager::Manager::load(): wrong interface string of plugin" << name
            << Debug::nospace << ", expected" << expected << "but got" << found;
    return LoadState::WrongInterfaceVersion;
}

bool findEntryPoints(const Containers::StringView name, PluginModule& out) {
    out.initializer = findSymbol<decltype(out.initializer)>(
        out.handle, "pluginInitializer", "initializer", name);
    if(!out.initializer)
        return false;
    out.finalizer = findSymbol<decltype(out.finalizer)>(
        out.handle, "pluginFinalizer", "finalizer", name);
    if(!out.finalizer)
        return false;
    out.instancer = findSymbol<decltype(out.instancer)>(
        out.handle, "pluginInstancer", "instancer", name);
    return out.instancer;
}

}

LoadState openPluginModule(const Containers::StringView name, const Containers::String& path,
    const Containers::StringView interface, PluginModule& out) {
    PluginModule module;
    module.handle = dlopen(path.data(), RTLD_NOW | RTLD_GLOBAL);
    if(!module.handle) {
        Error{} << "PluginManager::Manager::load(): cannot load plugin" << name << "from \""
                << Debug::nospace << path << Debug::nospace << "\":" << dlerror();
        return LoadState::LoadFailed;
    }

    Containers::ScopeGuard close{module.handle, dlclose};
    LoadState state = checkVersion(module.handle, name);
    if(state != LoadState::Loaded)
        return state;
    state = checkInterface(module.handle, name, interface);
    if(state != LoadState::Loaded)
        return state;
    if(!findEntryPoints(name, module))
        return LoadState::LoadFailed;

    close.release();
    out = module;
    return LoadState::Loaded;
}

}}
