/* A panel that shows nothing, keeps the editor open, and notes every 125 frames how much memory the
   process has and what accounts for its growth, see soak.sh. Now and then it puts the panels back to
   where they were at first: nobody else would do that, and soon all would be collapsed. */

#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <mutex>
#include <string>

#include <Corrade/PluginManager/AbstractManager.h>
#include <imgui.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/EditorView.h"
#include "host/EditorData.h"
#include "host/Events.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"

/* Of the sanitizers' runtime, null without them */
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace QuillmereEngine { namespace {

constexpr unsigned long long Interval = 125, ArrangeInterval = 50;

std::size_t allocatedBytes() {
    if(__sanitizer_get_current_allocated_bytes)
        return __sanitizer_get_current_allocated_bytes();
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

class SoakProbe: public EditorView {
public:
    using EditorView::EditorView;

    const char* title() const override { return "Soak probe"; }
    void draw() override {}
    void exitEvent(ExitEvent& event) override { event.accepted = true; }

    void update() override {
        if(_editorData->frame % Interval == 0)
            report();
        if(_editorData->frame % ArrangeInterval == 0)
            arrange();
    }

private:
    void arrange() {
        /* By their titles only, as most drags begin beside the fields that they are meant for */
        ImGui::GetIO().ConfigWindowsMoveFromTitleBarOnly = true;
        if(_layout.empty() && _editorData->frame)
            _layout = ImGui::SaveIniSettingsToMemory();
        ImGui::LoadIniSettingsFromMemory(_layout.data(), _layout.size());
    }

    void report() {
        std::size_t lines;
        {
            const std::lock_guard<std::mutex> lock{_application->logMutex};
            lines = _application->consoleLines.size();
        }
        const ChangeManager& changes = *_application->changeManager;
        std::size_t pathBytes = 0;
        for(const Change& change: changes.changes())
            pathBytes += change.path.size();
        std::FILE* const file = std::fopen(std::getenv("QUILLMERE_SOAK_REPORT"), "a");
        if(!file)
            std::abort();
        std::fprintf(file, "%llu %zu %zu %zu %zu %zu %zu\n", _editorData->frame, allocatedBytes(),
            _application->project->allocator().Capacity(), changes.changeCount(), pathBytes, lines,
            changes.revision());
        std::fclose(file);
    }

    std::string _layout;
};

}}

CORRADE_PLUGIN_REGISTER(
    SoakProbe, QuillmereEngine::SoakProbe, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
