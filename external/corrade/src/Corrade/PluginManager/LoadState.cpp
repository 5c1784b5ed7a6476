#include <cstdint>

#include <Corrade/PluginManager/AbstractManager.h>
#include <Corrade/Utility/Debug.h>

namespace Corrade { namespace PluginManager {

namespace {

const char* nameOf(const LoadState value) {
    switch(value) {
        case LoadState::NotFound:
            return "NotFound";
        case LoadState::WrongPluginVersion:
            return "WrongPluginVersion";
        case LoadState::WrongInterfaceVersion:
            return "WrongInterfaceVersion";
        case LoadState::WrongMetadataFile:
            return "WrongMetadataFile";
        case LoadState::UnresolvedDependency:
            return "UnresolvedDependency";
        case LoadState::LoadFailed:
            return "LoadFailed";
        case LoadState::Static:
            return "Static";
        case LoadState::Loaded:
            return "Loaded";
        case LoadState::NotLoaded:
            return "NotLoaded";
        case LoadState::UnloadFailed:
            return "UnloadFailed";
        case LoadState::Required:
            return "Required";
        case LoadState::Used:
            return "Used";
    }
    return nullptr;
}

}

Utility::Debug& operator<<(Utility::Debug& debug, const LoadState value) {
    debug << "PluginManager::LoadState" << Utility::Debug::nospace;
    if(const char* const name = nameOf(value))
        return debug << "::" << Utility::Debug::nospace << name;
    /* Addresses are printed in hexadecimal, as such a number is best read */
    return debug << "(" << Utility::Debug::nospace
                 << reinterpret_cast<const void*>(std::uintptr_t(value)) << Utility::Debug::nospace
                 << ")";
}

}}
