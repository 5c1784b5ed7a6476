/* A panel that tells which build of it is running: built twice, the second exchanges the first */

#include <Corrade/PluginManager/AbstractManager.h>
#include <imgui.h>

#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"
#include "host/EditorData.h"

namespace QuillmereEngine { namespace {

class FixturePanel: public EditorView {
public:
    using EditorView::EditorView;

    const char* title() const override { return "Fixture " FIXTURE_GENERATION; }

    void update() override { ++_editorData->frame; }

    void draw() override {
        ImGui::SetNextWindowSize({200.0f, 100.0f});
        ImGui::Begin(title());
        ImGui::TextUnformatted("Fixture panel " FIXTURE_GENERATION);
        ImGui::End();
        /* For tests that see no more of the editor than what it prints */
        if(++_drawn == 3)
            log(LogLevel::Info, "Fixture " FIXTURE_GENERATION " was drawn three times");
    }

private:
    int _drawn = 0;
};

}}

CORRADE_PLUGIN_REGISTER(
    Fixture, QuillmereEngine::FixturePanel, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
