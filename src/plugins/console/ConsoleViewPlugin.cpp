#include <Corrade/PluginManager/AbstractManager.h>

#include "plugins/console/ConsoleView.h"

CORRADE_PLUGIN_REGISTER(
    ConsoleView, QuillmereEngine::ConsoleView, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
