#include <Corrade/PluginManager/AbstractManager.h>

#include "plugins/outline/OutlineView.h"

CORRADE_PLUGIN_REGISTER(
    OutlineView, QuillmereEngine::OutlineView, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
