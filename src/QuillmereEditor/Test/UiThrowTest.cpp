#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Tools/System.h"
#include "QuillmereEditor/Ui.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::UiPanel;

/* A handler of the changes of v that throws, whatever a widget has open. The panel looks that
   nothing is left open. */
struct UiThrowTest: ::testing::Test {
    UiThrowTest() { panel.throwAt("v"); }

    void show(const std::string& value, std::function<void()> draw) {
        panel.setDocument(R"({"objects":{"o1":{"name":"Lamp"}},"other":0,"v":)" + value + "}");
        panel.show([this, draw = std::move(draw)] {
            draw();
            panel.mark();
        });
    }

    /* The change has been made, the exception reached the panel, and frames go on */
    void expectThrown(const std::string& after) {
        EXPECT_EQ(panel.caught, 1);
        EXPECT_NE(panel.document().find("\"v\":" + after), std::string::npos) << panel.document();
        panel.input.idle(3);
        EXPECT_EQ(panel.caught, 1);
    }

    void openCombo() { panel.input.click({panel.size.x * 0.33f + 20.0f, panel.box().center().y}); }

    UiPanel panel;
};

TEST_F(UiThrowTest, Drag) {
    show("1", [this] { panel.ui.inputInt("v", 1, 0); });
    const ImVec2 from = panel.box().center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    expectThrown("11");
}

TEST_F(UiThrowTest, DragOfEachNumber) {
    struct {
        std::function<void()> draw;
        const char *before, *after;
    } const cases[]{{[this] { panel.ui.inputFloat("v"); }, "1", "2.0"},
        {[this] { panel.ui.inputFloat2("v"); }, "[1,2]", "[2.0,2.0]"},
        {[this] { panel.ui.inputFloat3("v"); }, "[1,2,3]", "[2.0,2.0,3.0]"},
        {[this] { panel.ui.inputFloat4("v"); }, "[1,2,3,4]", "[2.0,2.0,3.0,4.0]"},
        {[this] { panel.ui.inputInt2("v"); }, "[1,2]", "[11,2]"},
        {[this] { panel.ui.inputInt3("v"); }, "[1,2,3]", "[11,2,3]"},
        {[this] { panel.ui.inputInt4("v"); }, "[1,2,3,4]", "[11,2,3,4]"},
        {[this] { panel.ui.colorEdit3("v"); }, "[0,1,1]", "[0.03921568766236305,1.0,1.0]"},
        {[this] { panel.ui.colorEdit4("v"); }, "[0,1,1,1]", "[0.03921568766236305,1.0,1.0,1.0]"}};
    for(const auto& i: cases) {
        show(i.before, i.draw);
        const ImVec2 from = panel.box().at(0.1f, 0.5f);
        panel.input.drag(from, {from.x + 10.0f, from.y});
        expectThrown(i.after);
        panel.input.idle(40);
    }
}

TEST_F(UiThrowTest, ColourPicker) {
    show("[0,1,1]", [this] { panel.ui.colorEdit3("v"); });
    panel.input.click({panel.box().max.x - 5.0f, panel.box().center().y});
    ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    const ImGuiWindow& picker = *ImGui::GetCurrentContext()->OpenPopupStack.back().Window;
    panel.input.moveTo({picker.Pos.x + 60.0f, picker.Pos.y + 80.0f});
    panel.input.press();
    EXPECT_GE(panel.caught, 1);
    EXPECT_EQ(panel.manager.changeCount(), 1);
    panel.input.release();
}

TEST_F(UiThrowTest, PathIsShownAllTheSame) {
    show("1", [this] { panel.ui.inputInt("v", 1, 0); });
    const ImVec2 from = panel.box().center();
    panel.input.moveTo(from);
    panel.input.press();
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.moveTo({from.x + 10.0f, from.y});
    EXPECT_EQ(panel.caught, 1);
    /* Dear ImGui only measures a tooltip in its first frame */
    const ImGuiWindow* const tooltip = ImGui::FindWindowByName("##Tooltip_00");
    ASSERT_NE(tooltip, nullptr);
    EXPECT_TRUE(tooltip->Active);
    panel.input.hold(ImGuiKeyModFlags_None);
    panel.input.release();
}

TEST_F(UiThrowTest, PasteInTheMenu) {
    show("1", [this] { panel.ui.inputFloat("v"); });
    panel.frame.clipboard = "2";
    panel.input.moveTo(panel.box().center());
    panel.input.press(1);
    panel.input.release(1);
    panel.input.idle(2);
    panel.clickItem("?Paste", ImGui::GetCurrentContext()->OpenPopupStack.back().Window->Name);
    expectThrown("2");
}

TEST_F(UiThrowTest, PasteByShortcut) {
    show("[1,2,3]", [this] { panel.ui.colorEdit3("v"); });
    panel.frame.clipboard = "[4,5,6]";
    panel.input.moveTo(panel.box().at(0.1f, 0.5f));
    panel.input.type(ImGuiKey_V, ImGuiKeyModFlags_Super);
    expectThrown("[4,5,6]");
}

TEST_F(UiThrowTest, ScopeOutsideIsNotTheWidgets) {
    show(R"({"x":1})", [this] {
        const int before = ImGui::GetCurrentWindow()->IDStack.Size;
        panel.ui.pushScope("v");
        try {
            panel.ui.inputInt("x", 1, 0);
        } catch(...) {
            EXPECT_STREQ(panel.ui.scope.data(), "/v");
            EXPECT_EQ(ImGui::GetCurrentWindow()->IDStack.Size, before + 1);
            panel.ui.popScope();
            throw;
        }
        panel.ui.popScope();
    });
    const ImVec2 from = panel.box().center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.caught, 1);
}

TEST_F(UiThrowTest, Checkboxes) {
    const std::function<void()> draws[]{
        [this] { panel.ui.checkbox("v"); }, [this] { panel.ui.checkboxUnlabled("v"); }};
    for(const auto& draw: draws) {
        show("false", draw);
        panel.input.click(panel.box().center());
        expectThrown("true");
    }
}

TEST_F(UiThrowTest, Bit) {
    show("0", [this] { panel.ui.checkboxBit("v", 2, "Name"); });
    panel.input.click(panel.box().at(0.1f, 0.5f));
    expectThrown("4");
}

TEST_F(UiThrowTest, Bits) {
    show("0", [this] { panel.ui.checkboxBits("v", 6, {}); });
    panel.clickItem("2", "Panel");
    expectThrown("4");
}

TEST_F(UiThrowTest, Enum) {
    show(R"("a")", [this] { panel.ui.inputEnum("v", {"a", "b"}); });
    panel.input.click(panel.box().center());
    panel.clickItem("b", "##Combo_00");
    expectThrown(R"("b")");
}

TEST_F(UiThrowTest, Texts) {
    const std::function<void()> draws[]{
        [this] { panel.ui.inputText("v"); }, [this] { panel.ui.inputTextMultiline("v"); }};
    for(const auto& draw: draws) {
        show(R"("")", draw);
        panel.input.click(panel.box().center());
        panel.input.text("x");
        expectThrown(R"("x")");
        panel.input.click({600.0f, 400.0f});
    }
}

TEST_F(UiThrowTest, Rename) {
    show(R"("old")", [this] { panel.ui.renameable("v"); });
    panel.input.doubleClick(panel.box().center());
    panel.input.idle(3);
    panel.input.text("new");
    panel.input.type(ImGuiKey_Enter);
    expectThrown(R"("new")");
}

TEST_F(UiThrowTest, ListOfResources) {
    for(const bool byName: {false, true})
        for(const char* const item: {"Lamp", "-none-"}) {
            show(R"("gone")", [this, byName] { panel.ui.selectResource("v", "objects", byName); });
            openCombo();
            panel.clickItem(item, "##Combo_00");
            expectThrown(*item == '-' ? "null" : byName ? R"("Lamp")" : R"("o1")");
        }
}

TEST_F(UiThrowTest, Drop) {
    show("null", [this] {
        ImGui::Button("Source");
        panel.mark("source");
        if(ImGui::BeginDragDropSource()) {
            ImGui::SetDragDropPayload("meshes", "m1", 3);
            ImGui::EndDragDropSource();
        }
        panel.ui.selectResource("v", "meshes", false);
    });
    panel.input.moveTo(panel.box("source").center());
    panel.input.press();
    panel.input.moveTo(panel.box().center());
    panel.input.idle(2);
    panel.input.release();
    expectThrown(R"("m1")");
}

TEST_F(UiThrowTest, Pick) {
    show("null", [this] { panel.ui.selectResource("v", "objects", false); });
    panel.input.click(panel.box().center());
    panel.ui.pickedObject = "o1";
    panel.input.idle();
    expectThrown(R"("o1")");
    EXPECT_EQ(panel.ui.pickingId, 0u);
    EXPECT_EQ(panel.ui.pickedObject, nullptr);
}

TEST_F(UiThrowTest, ChosenFile) {
    setDialogAnswer(
        [](const DialogRequest&, void*) {
            return Containers::Array<std::string>{Corrade::DirectInit, 1, "file"};
        },
        nullptr);
    show("null", [this] { panel.ui.fileSelect("v", "Title", {}); });
    panel.input.click(panel.box().center());
    setDialogAnswer(nullptr, nullptr);
    expectThrown(R"("file")");
}

}}
