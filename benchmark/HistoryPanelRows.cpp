#include <cstring>
#include <string>

#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Debug.h>
#include <benchmark/benchmark.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/ChangeManager.h"
#include "Ratio.h"
#include "host/EditorData.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"
#include "plugins/history/HistoryView.h"
#include "testing/HeadlessFrame.h"
#include "testing/InputDriver.h"

namespace QuillmereBenchmark {

using namespace Corrade;
using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

constexpr int FewEntries = 1000, ManyEntries = 100000;

/* The panel in the whole of the display, with a history in groups of ten as scripts make them */
class HistoryPanel {
public:
    explicit HistoryPanel(const int entryCount) {
        _application.project = Containers::pointer<ProjectFile>();
        _application.changeManager = Containers::pointer<ChangeManager>(*_application.project);
        ChangeManager& changes = *_application.changeManager;
        for(int i = 0; i != entryCount; ++i) {
            if(i % 10 == 0)
                changes.beginGroup();
            const std::string path = "/objects/" + std::to_string(i % 100) + "/size";
            changes.pushChange(path.c_str(), rapidjson::Value{i}, false);
            if(i % 10 == 9)
                changes.commit();
        }
        std::ostream* const silence = nullptr;
        const Utility::Debug redirectDebug{silence};
        _view.init(_frame.context(), &_data, &_application);
        input.idle(3);
    }
    ~HistoryPanel() { _view.deinit(); }

    /* Half of what's scrolled over, a little further in each frame */
    bool scroll() {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(std::strstr(window->Name, "/rows_")) {
                const float y = window->ScrollMax.y * 0.5f;
                ImGui::SetScrollY(window, y + float(_scrollCount++ % 100) * 3.0f);
                return window->ScrollMax.y > 1000.0f;
            }
        return false;
    }

    void filter(const char* const text) {
        input.click(ImVec2{300.0f, 35.0f});
        input.text(text);
        input.idle(3);
    }

private:
    void draw() {
        ImGui::SetNextWindowPos(ImVec2{0.0f, 0.0f});
        ImGui::SetNextWindowSize(_frame.io().DisplaySize);
        _view.draw();
    }

    HeadlessFrame _frame;
    EditorData _data;
    QuillmereEditorApplication _application;
    PluginManager::Manager<AbstractModule> _modules{QUILLMERE_MODULE_DIR};
    HistoryView _view{_modules, "HistoryView"};
    int _scrollCount = 0;

public:
    InputDriver input{_frame, [this] { draw(); }};
};

Body scrolledFrames(const int entryCount, const char* const filter) {
    return [=](benchmark::State& state) {
        HistoryPanel panel{entryCount};
        panel.filter(filter);
        for([[maybe_unused]] auto _: state) {
            if(!panel.scroll())
                state.SkipWithError("the list doesn't scroll");
            panel.input.idle();
        }
    };
}

}

void addHistoryPanelRows() {
    for(const char* const filter: {"", "/1"})
        addRow({"history/scroll", "the panel with 1000 entries, scrolled as far", 1.3,
            scrolledFrames(ManyEntries, filter), scrolledFrames(FewEntries, filter),
            *filter ? "filtered" : "all"});
}

}
