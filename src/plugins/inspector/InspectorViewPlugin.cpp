#include <Corrade/PluginManager/AbstractManager.h>

#include "plugins/inspector/InspectorView.h"

CORRADE_PLUGIN_REGISTER(InspectorView, QuillmereEngine::InspectorView,
    "com.quillmere.QuillmereEditor.AbstractModule/1.1")
