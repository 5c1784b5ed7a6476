#include <cstdio>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "Ratio.h"
#include "host/ProjectFile.h"
#include "testing/HeadlessFrame.h"

namespace QuillmereBenchmark {

using namespace Corrade;
using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

constexpr int ObjectCount = 10000;
constexpr int RowCount = 200;

/* As they're made for objects: no order that a cache could use */
std::string objectId(const int i) {
    char id[40];
    const unsigned long long number = (i + 1ull) * 0x9e3779b97f4a7c15ull;
    std::snprintf(id, sizeof(id), "%08llX-0000-4000-8000-%012llX", number >> 32, number >> 16);
    return id;
}

std::string objectName(const int i) { return "Object " + std::to_string(i); }

/* Of an object's position */
float component(const int i, const int j) { return float(i) + 0.125f * float(j); }

int objectOfRow(const int row) { return row * (ObjectCount / RowCount) + 13; }

rapidjson::Value string(const std::string& text, rapidjson::MemoryPoolAllocator<>& pool) {
    return rapidjson::Value{text.data(), rapidjson::SizeType(text.size()), pool};
}

rapidjson::Value object(const int i, rapidjson::MemoryPoolAllocator<>& pool) {
    rapidjson::Value position{rapidjson::kArrayType};
    for(int j = 0; j != 3; ++j)
        position.PushBack(rapidjson::Value{double(component(i, j))}, pool);
    rapidjson::Value out{rapidjson::kObjectType};
    out.AddMember("name", string(objectName(i), pool), pool);
    out.AddMember("position", position, pool);
    return out;
}

/* A window that fills the display, and widgets in it */
struct Panel {
    template<class Draw> void run(Draw&& draw) {
        frame.run([&] {
            ImGui::SetNextWindowPos(ImVec2{0.0f, 0.0f});
            ImGui::SetNextWindowSize(frame.io().DisplaySize);
            ImGui::Begin("Panel");
            draw();
            ImGui::End();
        });
    }

    /* All rows can be seen, so that none is cut short */
    HeadlessFrame frame{ImVec2{1280.0f, 6000.0f}};
};

/* The same with a project of many objects */
struct ProjectPanel: Panel {
    ProjectPanel() {
        rapidjson::MemoryPoolAllocator<>& pool = project.allocator();
        rapidjson::Value objects{rapidjson::kObjectType};
        for(int i = 0; i != ObjectCount; ++i)
            objects.AddMember(string(objectId(i), pool), object(i, pool), pool);
        project.document->AddMember("objects", objects, pool);
        project.document->AddMember("target", string(objectId(7), pool), pool);
        ui.project = &project;
        ui.changeManager = &manager;
    }

    ProjectFile project;
    ChangeManager manager{project};
    Ui ui;
};

void floatRows(benchmark::State& state) {
    ProjectPanel panel;
    std::vector<std::string> ids;
    for(int i = 0; i != RowCount; ++i)
        ids.push_back(objectId(objectOfRow(i)));
    for([[maybe_unused]] auto _: state)
        panel.run([&] {
            panel.ui.pushScope("objects");
            for(const std::string& id: ids) {
                panel.ui.pushScope(id.c_str());
                panel.ui.inputFloat3("position");
                panel.ui.popScope();
            }
            panel.ui.popScope();
        });
}

void plainFloatRows(benchmark::State& state) {
    Panel panel;
    /* The same numbers, as the time goes into printing them */
    std::vector<float> values;
    for(int i = 0; i != RowCount; ++i)
        for(int j = 0; j != 3; ++j)
            values.push_back(component(objectOfRow(i), j));
    for([[maybe_unused]] auto _: state)
        panel.run([&] {
            for(int i = 0; i != RowCount; ++i) {
                ImGui::PushID(i);
                ImGui::AlignTextToFramePadding();
                ImGui::TextUnformatted("position");
                ImGui::SameLine(ImGui::GetContentRegionAvail().x * 0.33f);
                ImGui::DragFloat3("##val", &values[std::size_t(i) * 3], 0.1f);
                ImGui::PopID();
            }
        });
}

/* Opens a combo as a click does, which takes the next frame to be seen */
template<class Draw> void measureOpen(Panel& panel, benchmark::State& state, Draw&& draw) {
    ImGuiIO& io = panel.frame.io();
    io.MousePos = ImVec2{600.0f, 40.0f};
    for(const bool isDown: {false, true, false, false}) {
        io.MouseDown[0] = isDown;
        panel.run(draw);
    }
    if(ImGui::GetCurrentContext()->OpenPopupStack.empty())
        state.SkipWithError("the combo didn't open");
    for([[maybe_unused]] auto _: state)
        panel.run(draw);
}

void resourceCombo(benchmark::State& state) {
    ProjectPanel panel;
    measureOpen(panel, state, [&] { panel.ui.selectResource("target", "objects", false); });
}

void plainCombo(benchmark::State& state) {
    Panel panel;
    std::vector<std::string> names;
    for(int i = 0; i != ObjectCount; ++i)
        names.push_back(objectName(i));
    measureOpen(panel, state, [&] {
        Ui::label("target");
        if(!ImGui::BeginCombo("##val", names[7].c_str()))
            return;
        for(const std::string& name: names)
            ImGui::Selectable(name.c_str());
        ImGui::EndCombo();
    });
}

}

void addUiRows() {
    addRow({"ui/float3-rows", "200 rows of a text and ImGui::DragFloat3", 1.5, floatRows,
        plainFloatRows});
    addRow({"ui/resource-combo", "open ImGui combo of 10000 selectables", 3.0, resourceCombo,
        plainCombo});
}

}
