#include <Corrade/PluginManager/AbstractManager.h>

#include "host/AbstractModule.h"

namespace QuillmereEngine { namespace {

class NotAPanel: public AbstractModule {
public:
    using AbstractModule::AbstractModule;

    void load(Corrade::Containers::ArrayView<char>) override {}
    Corrade::Containers::Array<char> unload(bool) override { return {}; }
    int moduleType() override { return int(ModuleType::Engine); }
};

}}

CORRADE_PLUGIN_REGISTER(
    NotAPanel, QuillmereEngine::NotAPanel, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
