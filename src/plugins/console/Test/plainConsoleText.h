#ifndef Quillmere_plugins_console_Test_plainConsoleText_h
#define Quillmere_plugins_console_Test_plainConsoleText_h

#include "common/StringArrayView.h"

struct ImVec2;

namespace QuillmereEngine { namespace Testing {

/**
@brief @ref ConsoleTextEx() without any of its shortcuts

Converts with Dear ImGui's own function, walks over all characters and submits every line. What it
draws and what it makes of the edit state is what the real one is compared with.
*/
bool plainConsoleText(const char* label, StringArrayView lines, const char* text, int textSize,
    bool showInfo, bool showWarnings, bool showErrors, bool filtersChanged, bool scrollToBottom,
    const ImVec2& size, int flags);

}}

#endif
