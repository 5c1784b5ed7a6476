#include "host/AbstractModule.h"

using namespace Corrade;

Containers::StringView AbstractModule::pluginInterface() {
    using namespace Containers::Literals;
    return "com.quillmere.QuillmereEditor.AbstractModule/1.1"_s;
}

AbstractModule::AbstractModule(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    AbstractPlugin{manager, plugin} {}

AbstractModule::~AbstractModule() = default;
