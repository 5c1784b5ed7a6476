#ifndef Corrade_PluginManager_PluginMetadata_h
#define Corrade_PluginManager_PluginMetadata_h

/** @file
@brief Class @ref Corrade::PluginManager::PluginMetadata
*/

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/PluginManager.h>
#include <Corrade/PluginManager/visibility.h>
#include <vector>

namespace Corrade { namespace PluginManager {

/**
@brief What a manager knows of a plugin without loading it

Owned by the manager. Valid until the plugin is dropped from its folder.
*/
class CORRADE_PLUGINMANAGER_EXPORT PluginMetadata {
public:
    /** @brief Name of the plugin, not an alias */
    Containers::StringView name() const { return _name; }
    /** @brief Plugins that have to be loaded before, in the order of the file */
    Containers::ArrayView<const Containers::String> depends() const {
        return {_depends.data(), _depends.size()};
    }
    /** @brief Aliases, in the order of the file */
    Containers::ArrayView<const Containers::String> provides() const {
        return {_provides.data(), _provides.size()};
    }
    /** @brief Loaded plugins that depend on this one, in the order they were loaded in */
    Containers::ArrayView<const Containers::String> usedBy() const {
        return {_usedBy.data(), _usedBy.size()};
    }

private:
    friend class AbstractManager;

    explicit PluginMetadata(Containers::StringView name);
    PluginMetadata(const PluginMetadata&);
    ~PluginMetadata();
    PluginMetadata& operator=(const PluginMetadata&);

    Containers::String _name;
    std::vector<Containers::String> _depends, _provides, _usedBy;
};

}}

#endif
