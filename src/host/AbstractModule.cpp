#include "host/AbstractModule.h"

using namespace Corrade;

Containers::StringView AbstractModule::pluginInterface() {
    using namespace Containers::Literals;
    return QUILLMERE_MODULE_INTERFACE ""_s;
}

AbstractModule::AbstractModule(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    AbstractPlugin{manager, plugin} {}

AbstractModule::~AbstractModule() = default;
