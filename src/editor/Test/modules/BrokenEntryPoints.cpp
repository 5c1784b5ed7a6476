/* Entry points as the plugin macro writes them, with one thing wrong in each build */

#define EXPORT extern "C" __attribute__((visibility("default")))

EXPORT int pluginVersion();
EXPORT const char* pluginInterface();
EXPORT void pluginInitializer();
EXPORT void pluginFinalizer();

int pluginVersion() { return BROKEN_VERSION; }
const char* pluginInterface() { return BROKEN_INTERFACE; }
void pluginInitializer() {}
void pluginFinalizer() {}
