#include <Corrade/PluginManager/AbstractManager.h>

#include "plugins/history/HistoryView.h"

CORRADE_PLUGIN_REGISTER(
    HistoryView, QuillmereEngine::HistoryView, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
