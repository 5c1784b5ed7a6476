#include "plugins/console/Test/ConsolePanel.h"

#include <cstring>

#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Debug.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Ui.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Testing {

ConsolePanel::ConsolePanel():
    _manager{QUILLMERE_MODULE_DIR},
    view{_manager, "ConsoleView"},
    input{frame, [this] { view.draw(); }} {
    application.editor = Containers::Pointer<Editor>{new Editor};
    application.editor->serverSource = Containers::Pointer<ServerSource>{new TestServer};
    application.editor->javaScriptLines = Containers::Pointer<StringArray>{new StringArray};

    std::ostream* const silence = nullptr;
    const Utility::Debug redirectDebug{silence};
    view.init(frame.context(), &data, &application);
}

ConsolePanel::~ConsolePanel() { view.deinit(); }

void ConsolePanel::settle() {
    input.idle();
    ImGui::SetWindowPos("Console", ImVec2{0.0f, 0.0f});
    ImGui::SetWindowSize("Console", io().DisplaySize);
    input.idle(4);
}

StringArray& ConsolePanel::serverLines() {
    return static_cast<TestServer&>(*application.editor->serverSource).lines;
}

ImGuiWindow* ConsolePanel::textWindow() const { return findWindow("/#console_"); }

ImGuiWindow* findWindow(const char* const part) {
    for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
        if(std::strstr(window->Name, part))
            return window;
    return nullptr;
}

}}
