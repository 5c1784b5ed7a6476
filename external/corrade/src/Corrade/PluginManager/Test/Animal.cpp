#include <Corrade/Utility/Debug.h>

#include "AbstractAnimal.h"

/* A plugin that says on the debug output what happens to it. Compiled several
   times, with NAME, CLASS and CAN_BE_DELETED from the build. */

namespace {

using namespace Corrade;

int instanceCount = 0;

class CLASS: public AbstractAnimal {
public:
    static void initialize() { Utility::Debug{} << NAME << "initialized"; }
    static void finalize() { Utility::Debug{} << NAME << "finalized"; }

    explicit CLASS(PluginManager::AbstractManager& manager, const Containers::StringView& plugin):
        AbstractAnimal{manager, plugin},
        _count{++instanceCount} {}
    ~CLASS() { Utility::Debug{} << NAME << _count << "deleted"; }

    bool canBeDeleted() override { return CAN_BE_DELETED; }
    const char* name() override { return NAME; }
    int count() override { return _count; }

private:
    int _count;
};

}

CORRADE_PLUGIN_REGISTER(CLASS, CLASS, "corrade.test.AbstractAnimal/1.0")
