#include "AbstractPlugin.h"

#include <Corrade/PluginManager/AbstractManager.h>

namespace Corrade { namespace PluginManager {

using namespace Containers::Literals;

struct AbstractPlugin::State {
    AbstractManager* manager;
    const PluginMetadata* metadata;
    Containers::String plugin;
};

Containers::StringView AbstractPlugin::pluginInterface() { return ""_s; }

Containers::Array<Containers::String> AbstractPlugin::pluginSearchPaths() { return {}; }

Containers::StringView AbstractPlugin::pluginSuffix() { return ".so"_s; }

Containers::StringView AbstractPlugin::pluginMetadataSuffix() { return ".conf"_s; }

void AbstractPlugin::initialize() {}

void AbstractPlugin::finalize() {}

AbstractPlugin::AbstractPlugin() = default;

AbstractPlugin::AbstractPlugin(AbstractManager& manager, const Containers::StringView& plugin):
    _state{InPlaceInit, &manager, &manager.registerInstance(plugin, *this), plugin} {}

AbstractPlugin::~AbstractPlugin() {
    if(_state)
        _state->manager->unregisterInstance(*_state->metadata, *this);
}

bool AbstractPlugin::canBeDeleted() { return false; }

Containers::StringView AbstractPlugin::plugin() const {
    return _state ? Containers::StringView{_state->plugin} : ""_s;
}

const PluginMetadata* AbstractPlugin::metadata() const {
    return _state ? _state->metadata : nullptr;
}

}}
