#ifndef Corrade_PluginManager_Test_AbstractAnimal_h
#define Corrade_PluginManager_Test_AbstractAnimal_h

#include <Corrade/Containers/StringView.h>
#include <Corrade/PluginManager/AbstractManager.h>
#include <Corrade/PluginManager/AbstractPlugin.h>

/* What the modules of the test implement */
class AbstractAnimal: public Corrade::PluginManager::AbstractPlugin {
public:
    static Corrade::Containers::StringView pluginInterface() {
        using namespace Corrade::Containers::Literals;
        return "corrade.test.AbstractAnimal/1.0"_s;
    }

    using Corrade::PluginManager::AbstractPlugin::AbstractPlugin;

    virtual const char* name() = 0;
    /* Number of instances since the module was loaded */
    virtual int count() = 0;
};

#endif
