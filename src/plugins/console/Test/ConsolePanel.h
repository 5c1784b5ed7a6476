#ifndef Quillmere_plugins_console_Test_ConsolePanel_h
#define Quillmere_plugins_console_Test_ConsolePanel_h

#include <Corrade/PluginManager/Manager.h>

#include "host/EditorData.h"
#include "host/QuillmereEditorApplication.h"
#include "plugins/console/ConsoleView.h"
#include "testing/HeadlessFrame.h"
#include "testing/InputDriver.h"

struct ImGuiWindow;

namespace QuillmereEngine { namespace Testing {

/** @brief A server that says what it's told to */
struct TestServer: ServerSource {
    StringArrayView& serverLines() override { return lines; }
    StringArray lines;
};

/**
@brief The console panel in a host of its own, for tests and benchmarks

The panel's window fills the display once @ref settle() was called.
*/
class ConsolePanel {
public:
    ConsolePanel();
    ~ConsolePanel();

    /** @brief Draw until the window has its place and size and nothing scrolls any more */
    void settle();

    ImGuiIO& io() { return frame.io(); }
    StringArray& consoleLines() { return application.consoleLines; }
    StringArray& serverLines();
    StringArray& javaScriptLines() { return *application.editor->javaScriptLines; }

    /** @brief The child window that the lines are drawn into. Exists after the first frame. */
    ImGuiWindow* textWindow() const;

    HeadlessFrame frame;
    EditorData data;
    QuillmereEditorApplication application;

private:
    Corrade::PluginManager::Manager<AbstractModule> _manager;

public:
    ConsoleView view;
    InputDriver input;
};

/** @brief The window whose name contains @p part, null if there's none */
ImGuiWindow* findWindow(const char* part);

}}

#endif
