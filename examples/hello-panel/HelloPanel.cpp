/* A panel that greets the open project, lets its name be edited and writes to the console */

#include <string>

#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/PluginManager/AbstractManager.h>
#include <imgui.h>

#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"

using namespace Corrade;

namespace {

class HelloPanel: public QuillmereEngine::EditorView {
public:
    using EditorView::EditorView;

    const char* title() const override { return "Hello"; }

    /* Called once a frame. Begin() is false while the window is folded or behind another tab; it
       needs its End() all the same, and so it does when something throws. */
    void draw() override {
        const bool isShown = ImGui::Begin(title());
        const Containers::ScopeGuard end{ImGui::End};
        if(isShown)
            drawContent();
    }

private:
    void drawContent() {
        if(_greetings == 0)
            greet();
        ImGui::TextUnformatted("This panel is a module of its own.");
        if(ImGui::Button("Greet"))
            greet();
        drawProjectName();
    }

    /* The console panel shows it, and so does a terminal */
    void greet() {
        const std::string line = "Hello from a panel, " + std::to_string(++_greetings);
        log(LogLevel::Info, line.c_str());
    }

    /* A property widget edits the value of its key in the open project; undo and redo come with it */
    void drawProjectName() {
        if(_application->project->document)
            ui().inputText("name");
        else
            ImGui::TextDisabled("No project is open.");
    }

    int _greetings = 0;
};

}

CORRADE_PLUGIN_REGISTER(HelloPanel, HelloPanel, QUILLMERE_MODULE_INTERFACE)
