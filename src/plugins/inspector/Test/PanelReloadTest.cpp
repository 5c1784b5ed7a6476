/* The modules of the inspector and the outline, exchanged in the middle of what a user does */

#include <optional>
#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "QuillmereEditor/Change.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"
#include "testing/ProjectHost.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

constexpr const char* Project = R"({
    "objects": {
        "1": {"name": "Lamp", "target": null, "tags": ["night", "harbour"], "notes": "",
            "more": {"depth": 7}},
        "2": {"name": "Boat"}
    },
    "meshes": {"box": {"name": "Crate"}}
})";

/* A panel of a module that can be closed and opened again */
class Module {
public:
    explicit Module(Testing::ProjectHost& host, const char* const name): _host(host), _name{name} {
        open();
        view().load();
        _host.init(view());
    }

    ~Module() {
        view().deinit();
        close();
    }

    void reload() {
        Containers::Array<char> state = _panel->unload(false);
        close();
        open();
        std::ostream* const silence = nullptr;
        const Utility::Debug redirectDebug{silence};
        view().load(state);
    }

    EditorView& view() { return static_cast<EditorView&>(*_panel); }

private:
    void open() {
        _panel = _host.modules.loadAndInstantiate(_name);
        ASSERT_TRUE(bool(_panel));
    }

    void close() {
        _panel = nullptr;
        EXPECT_EQ(_host.modules.unload(_name), PluginManager::LoadState::NotLoaded);
    }

    Testing::ProjectHost& _host;
    const char* _name;
    Containers::Pointer<AbstractModule> _panel;
};

struct PanelReloadTest: ::testing::Test {
    PanelReloadTest() {
        host.data.selectedObject = "1";
        input.idle(3);
    }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({300.0f, 700.0f});
        outline.view().draw();
        ImGui::SetNextWindowPos({300.0f, 0.0f});
        ImGui::SetNextWindowSize({500.0f, 900.0f});
        inspector.view().draw();
    }

    void reload() {
        outline.reload();
        inspector.reload();
        input.idle(2);
    }

    ImVec2 at(const std::string& text, const char* const window = "Inspector") {
        const std::optional<ImVec2> out = Testing::placeOfText(text, window);
        EXPECT_TRUE(out) << text << " isn't drawn in " << window;
        return out ? ImVec2{out->x + 3.0f, out->y + 3.0f} : ImVec2{};
    }

    bool shows(const std::string& text, const char* const window = "Inspector") {
        return bool(Testing::placeOfText(text, window));
    }

    ImVec2 valueAt(const std::string& label) { return {480.0f, at(label).y}; }

    Testing::ProjectHost host{Project, {800.0f, 900.0f}};
    Module outline{host, "OutlineView"};
    Module inspector{host, "InspectorView"};
    Testing::InputDriver input{host.frame, [this] { draw(); }};
};

TEST_F(PanelReloadTest, SelectionAndOpenSectionsStay) {
    input.click(at("more(1member)"));
    input.click(at("Transform"));
    input.click(at("meshes", "Outline"));
    input.idle();
    ASSERT_TRUE(shows("depth"));
    ASSERT_FALSE(shows("translation"));
    ASSERT_TRUE(shows("Crate", "Outline"));
    reload();
    EXPECT_TRUE(shows("Lamp"));
    EXPECT_TRUE(shows("depth"));
    EXPECT_FALSE(shows("translation"));
    EXPECT_TRUE(shows("Crate", "Outline"));
}

TEST_F(PanelReloadTest, EditedFieldGoesOn) {
    input.click({480.0f, at("notes").y});
    input.text("be");
    reload();
    input.text("fore");
    EXPECT_EQ(host.value("/objects/1/notes"), "\"before\"");
}

TEST_F(PanelReloadTest, RenamingGoesOn) {
    input.doubleClick(at("Lamp"));
    input.idle(3);
    input.text("Lan");
    reload();
    input.text("tern");
    input.type(ImGuiKey_Enter);
    EXPECT_EQ(host.value("/objects/1/name"), "\"Lantern\"");
}

TEST_F(PanelReloadTest, TagThatIsNotAddedYetAndTheSelectedOneStay) {
    input.click(at("harbour", ""));
    input.click(valueAt("tags"));
    input.text("new");
    input.click({700.0f, 800.0f});
    reload();
    input.click(at("-"));
    EXPECT_EQ(host.value("/objects/1/tags"), R"(["night"])");
    input.click(at("+"));
    EXPECT_EQ(host.value("/objects/1/tags"), R"(["night","new"])");
}

TEST_F(PanelReloadTest, SelectorGoesOnWaitingForItsObject) {
    ImVec2 button = at("target");
    for(button.x = 795.0f; button.x > 700.0f && !host.ui().pickingId; button.x -= 8.0f)
        input.click(button);
    ASSERT_TRUE(host.ui().pickingId);
    reload();
    EXPECT_TRUE(host.ui().pickingId);
    input.click(at("Boat", "Outline"));
    EXPECT_EQ(host.value("/objects/1/target"), "\"2\"");
    EXPECT_EQ(host.data.selectedObject, "1");
    EXPECT_EQ(host.ui().pickingId, 0);
}

TEST_F(PanelReloadTest, StateOfAnotherBuildIsTheHostOnly) {
    Containers::Array<char> state = inspector.view().unload(false);
    std::ostream* const silence = nullptr;
    const Utility::Debug redirectDebug{silence};
    for(const std::size_t size: {3 * sizeof(void*), state.size() - 1}) {
        inspector.view().load(state.prefix(size));
        input.idle(2);
        EXPECT_TRUE(shows("Lamp"));
    }
}

TEST_F(PanelReloadTest, ShutdownKeepsNothing) {
    EXPECT_TRUE(inspector.view().unload(true).isEmpty());
    EXPECT_TRUE(outline.view().unload(true).isEmpty());
}

}}
