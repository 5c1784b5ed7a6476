/* A panel that throws in the middle of its window */

#include <stdexcept>

#include <Corrade/PluginManager/AbstractManager.h>
#include <imgui.h>

#include "QuillmereEditor/EditorView.h"

namespace QuillmereEngine { namespace {

class ThrowingPanel: public EditorView {
public:
    using EditorView::EditorView;

    const char* title() const override { return "Throwing"; }

    void draw() override {
        ImGui::PushStyleVar(ImGuiStyleVar_Alpha, 0.5f);
        ImGui::Begin(title());
        ImGui::BeginChild("child");
        throw std::runtime_error{"the panel has had enough"};
    }
};

}}

CORRADE_PLUGIN_REGISTER(
    Throwing, QuillmereEngine::ThrowingPanel, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
