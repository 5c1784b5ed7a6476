#include <functional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::UiPanel;

struct StyleCase {
    const char* name;
    /* In pixels */
    float fontSize;
    /* Of all paddings, spacings and roundings, and of the borders */
    float room, border;
    float windowWidth;
};

const StyleCase StyleCases[]{{"Smallest", 10.0f, 0.0f, 0.0f, 640.0f},
    {"SmallWithRoom", 10.0f, 24.0f, 3.0f, 640.0f}, {"Usual", 13.0f, 4.0f, 1.0f, 640.0f},
    {"Large", 24.0f, 8.0f, 1.0f, 640.0f}, {"LargestWithoutRoom", 40.0f, 0.0f, 0.0f, 1200.0f},
    {"LargestWithRoom", 40.0f, 24.0f, 3.0f, 1200.0f}, {"Narrow", 13.0f, 4.0f, 1.0f, 60.0f},
    {"NarrowWithRoom", 40.0f, 24.0f, 3.0f, 60.0f}};

void PrintTo(const StyleCase& row, std::ostream* const out) { *out << row.name; }

struct UiStyleTest: ::testing::TestWithParam<StyleCase> {
    UiStyleTest() {
        setFontSize(GetParam().fontSize);
        setStyle(GetParam().room, GetParam().border);
        panel.size = {GetParam().windowWidth, 700.0f};
        panel.setDocument(
            R"({"objects":{"o1":{"name":"Lamp"},"o2":{"name":"Box"}},"flag":false,"int":1,)"
            R"("vector":[1,2,3],"colour":[1,0,0,1],"enum":"a","string":"text","object":"gone",)"
            R"("list":["one","two"],"mask":5})");
    }

    void setFontSize(const float size) {
        ImFontAtlas& fonts = *panel.frame.io().Fonts;
        fonts.Clear();
        ImFontConfig config;
        config.SizePixels = size;
        fonts.AddFontDefault(&config);
        unsigned char* pixels;
        int width, height;
        fonts.GetTexDataAsAlpha8(&pixels, &width, &height);
    }

    static void setStyle(const float room, const float border) {
        ImGuiStyle& style = ImGui::GetStyle();
        style.WindowPadding = style.FramePadding = style.ItemSpacing = style.ItemInnerSpacing =
            style.CellPadding = ImVec2{room, room};
        style.FrameRounding = style.WindowRounding = style.ChildRounding = style.PopupRounding =
            style.GrabRounding = room;
        style.FrameBorderSize = style.WindowBorderSize = style.ChildBorderSize =
            style.PopupBorderSize = border;
    }

    float column() const { return rowWidth * 0.33f; }

    UiPanel panel;
    /* That the rows have */
    float rowWidth = 0.0f;
};

TEST_P(UiStyleTest, ColumnsAndStacksHold) {
    const std::pair<const char*, std::function<void()>> rows[]{
        {"int", [this] { panel.ui.inputInt("int", 1, 0); }},
        {"float", [this] { panel.ui.inputFloat("int"); }},
        {"vector", [this] { panel.ui.inputFloat3("vector"); }},
        {"integers", [this] { panel.ui.inputInt2("vector"); }},
        {"colour", [this] { panel.ui.colorEdit4("colour"); }},
        {"bit", [this] { panel.ui.checkboxBit("mask", 1, nullptr); }},
        {"enum",
            [this] {
                panel.ui.inputEnum("enum", {"a", "b"});
            }},
        {"string", [this] { panel.ui.inputText("string"); }},
        {"text", [this] { panel.ui.inputTextMultiline("string"); }}};
    for(const auto& row: rows) {
        panel.show([&] {
            rowWidth = ImGui::GetContentRegionAvail().x;
            ImGui::SetNextItemWidth(40.0f);
            row.second();
            panel.mark();
        });
        /* SameLine() takes zero for "behind the last item" */
        if(column() > 1.0f) {
            EXPECT_NEAR(panel.box().min.x, column(), 1.0f) << row.first;
        }
    }
}

TEST_P(UiStyleTest, AllWidgetsCanBeDrawnAndUsed) {
    int selected = 0;
    panel.show([&] {
        /* What is used comes first, as a window of the largest has no room for the rest */
        panel.ui.selectResource("object", "objects", false);
        panel.mark("pick");
        panel.ui.checkbox("flag");
        panel.mark("flag");
        panel.ui.inputInt("int", 1, 0);
        panel.mark("int");
        Ui::iconButton("X", "icon");
        ImGui::SameLine();
        Ui::buttonGrouped("A", "group", Ui::ButtonFlag::RoundLeft);
        ImGui::SameLine(0.0f, 0.0f);
        Ui::buttonGrouped("B", "group", Ui::ButtonFlag::RoundRight);
        panel.ui.text("string");
        panel.ui.checkboxUnlabled("flag2");
        panel.ui.checkboxBit("mask", 1, nullptr);
        panel.ui.colorEdit4("colour");
        panel.ui.renameable("string");
        panel.ui.fileSelect("file", "Title", {});
        panel.ui.checkboxBits("bits", 10, {});
        panel.ui.stringList("list", selected);
    });
    panel.input.click(panel.box("flag").at(0.01f, 0.5f));
    EXPECT_EQ(panel.lastChange(), "Change /flag: false -> true");

    if(GetParam().windowWidth < 100.0f)
        return;
    const ImVec2 from = panel.box("int").center();
    panel.input.drag(from, {from.x + 10.0f, from.y});
    EXPECT_EQ(panel.lastChange(), "Change /int: 1 -> 11");
    panel.input.click(panel.box("pick").center());
    EXPECT_NE(panel.ui.pickingId, 0u);
}

TEST_P(UiStyleTest, MenusAndListsOpen) {
    panel.show([&] {
        panel.ui.selectResource("object", "meshes", false);
        panel.mark();
    });
    panel.input.moveTo(panel.box().center());
    panel.input.press(1);
    panel.input.release(1);
    panel.input.idle(2);
    ASSERT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 1);
    panel.clickItem("?Copy", ImGui::GetCurrentContext()->OpenPopupStack.back().Window->Name);
    EXPECT_EQ(panel.frame.clipboard, "\"gone\"");

    panel.input.click(panel.box().center());
    panel.clickItem("-none-", "##Combo_00");
    EXPECT_EQ(panel.lastChange(), "Change /object: \"gone\" -> null");
}

INSTANTIATE_TEST_SUITE_P(All, UiStyleTest, ::testing::ValuesIn(StyleCases),
    [](const auto& row) { return std::string{row.param.name}; });

}}
