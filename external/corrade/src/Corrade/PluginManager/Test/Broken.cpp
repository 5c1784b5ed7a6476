#include <Corrade/PluginManager/visibility.h>
#include <cstdlib>

/* Entry points of which the build leaves one out or makes one wrong. None but
   the first two may ever be called. */

#ifndef VERSION
#define VERSION 7
#endif
#ifndef INTERFACE
#define INTERFACE "corrade.test.AbstractAnimal/1.0"
#endif

extern "C" {

#ifndef NO_VERSION
CORRADE_PLUGIN_EXPORT int pluginVersion();
int pluginVersion() { return VERSION; }
#endif

#ifndef NO_INTERFACE
CORRADE_PLUGIN_EXPORT const char* pluginInterface();
const char* pluginInterface() { return INTERFACE; }
#endif

#ifndef NO_INITIALIZER
CORRADE_PLUGIN_EXPORT void pluginInitializer();
void pluginInitializer() { std::abort(); }
#endif

#ifndef NO_FINALIZER
CORRADE_PLUGIN_EXPORT void pluginFinalizer();
void pluginFinalizer() { std::abort(); }
#endif

#ifndef NO_INSTANCER
CORRADE_PLUGIN_EXPORT void* pluginInstancer();
void* pluginInstancer() { std::abort(); }
#endif
}
