#include <functional>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrame.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine { namespace {

using Testing::DrawnQuad;
using Testing::drawnRectangles;
using Testing::HeadlessFrame;
using Testing::InputDriver;

const ImVec4 CheckedBackground{0.125f, 0.23f, 0.35f, 1.0f};
const ImVec4 CheckedHighlight{0.25f, 0.46f, 0.70f, 1.0f};
const ImVec4 UncheckedBackground{0.29f, 0.29f, 0.29f, 0.44f};
const ImVec4 White{1.0f, 1.0f, 1.0f, 1.0f};

/* A check box or a radio button in a window, and what it leaves behind */
struct UiCheckboxTest: ::testing::Test {
    UiCheckboxTest() {
        /* White, too, otherwise */
        frame.io();
        ImGui::GetStyle().Colors[ImGuiCol_Text] = ImVec4{0.5f, 0.5f, 0.5f, 1.0f};
    }

    void show(std::function<void()> content) { _content = std::move(content); }

    void draw() {
        ImGui::SetNextWindowPos(ImVec2{0.0f, 0.0f});
        ImGui::SetNextWindowSize(ImVec2{300.0f, 200.0f});
        ImGui::Begin("Window");
        const ImGuiContext& context = *ImGui::GetCurrentContext();
        const int colorsBefore = context.ColorStack.Size;
        const int variablesBefore = context.StyleVarStack.Size;
        _content();
        colorsLeft = context.ColorStack.Size - colorsBefore;
        variablesLeft = context.StyleVarStack.Size - variablesBefore;
        min = ImGui::GetItemRectMin();
        max = ImGui::GetItemRectMax();
        ImGui::End();
    }

    ImVec2 middle() const { return {(min.x + max.x) * 0.5f, (min.y + max.y) * 0.5f}; }

    /* Corners of that colour */
    static std::size_t countOf(const ImVec4& color) {
        std::size_t count = 0;
        const ImU32 packed = ImGui::ColorConvertFloat4ToU32(color);
        const ImDrawData& data = *ImGui::GetDrawData();
        for(int i = 0; i != data.CmdListsCount; ++i)
            for(const ImDrawVert& vertex: data.CmdLists[i]->VtxBuffer)
                count += vertex.col == packed ? 1 : 0;
        return count;
    }

    HeadlessFrame frame;
    InputDriver input{frame, [this] { draw(); }};
    int colorsLeft = 0, variablesLeft = 0;
    ImVec2 min{}, max{};
    std::vector<bool> results;

private:
    std::function<void()> _content;
};

TEST_F(UiCheckboxTest, UncheckedHasItsColours) {
    bool value = false;
    show([&] { Ui::checkbox("Box", &value); });
    input.idle(2);
    EXPECT_GT(countOf(UncheckedBackground), 0);
    EXPECT_EQ(countOf(CheckedBackground), 0);
    EXPECT_EQ(countOf(White), 0);
}

TEST_F(UiCheckboxTest, CheckedHasItsColours) {
    bool value = true;
    show([&] { Ui::checkbox("Box", &value); });
    input.idle(2);
    EXPECT_GT(countOf(CheckedBackground), 0);
    EXPECT_EQ(countOf(UncheckedBackground), 0);
    EXPECT_GT(countOf(White), 0);
}

TEST_F(UiCheckboxTest, CheckedLightsUpUnderTheMouse) {
    bool value = true;
    show([&] { Ui::checkbox("Box", &value); });
    input.idle(2);
    input.moveTo(middle());
    EXPECT_GT(countOf(CheckedHighlight), 0);
    EXPECT_EQ(countOf(CheckedBackground), 0);
    input.press();
    EXPECT_GT(countOf(CheckedHighlight), 0);
    input.release();
}

TEST_F(UiCheckboxTest, UncheckedTakesTheStylesColoursUnderTheMouse) {
    bool value = false;
    show([&] { Ui::checkbox("Box", &value); });
    input.idle(2);
    input.moveTo(middle());
    EXPECT_GT(countOf(ImGui::GetStyle().Colors[ImGuiCol_FrameBgHovered]), 0);
    EXPECT_EQ(countOf(CheckedHighlight), 0);
}

TEST_F(UiCheckboxTest, ClickTogglesOnceAndLeavesNothingPushed) {
    bool value = false;
    int toggled = 0;
    show([&] {
        const bool pressed = Ui::checkbox("Box", &value);
        results.push_back(pressed);
        toggled += pressed;
        EXPECT_TRUE(!pressed || value == (toggled % 2 == 1));
    });
    input.idle(2);
    /* Unchecked to checked and back: each time another number of colours is pushed than the value
       has after the click */
    for(const bool expected: {true, false, true}) {
        const int before = toggled;
        input.moveTo(middle());
        input.press();
        EXPECT_EQ(toggled, before);
        input.release();
        EXPECT_EQ(toggled, before + 1);
        EXPECT_EQ(value, expected);
        EXPECT_EQ(colorsLeft, 0);
        EXPECT_EQ(variablesLeft, 0);
        input.idle();
        EXPECT_FALSE(results.back());
    }
}

TEST_F(UiCheckboxTest, BoxHasOnePixelOfPadding) {
    bool value = false;
    show([&] { Ui::checkbox("Box", &value); });
    input.idle(2);
    EXPECT_FLOAT_EQ(max.y - min.y, ImGui::GetFontSize() + 2.0f);
}

TEST_F(UiCheckboxTest, BoxIsRoundWhateverTheStyle) {
    bool value = false;
    frame.io();
    ImGui::GetStyle().FrameRounding = 0.0f;
    show([&] { Ui::checkbox("Box", &value); });
    input.idle(2);
    EXPECT_TRUE(drawnRectangles(ImGui::ColorConvertFloat4ToU32(UncheckedBackground)).empty());
    EXPECT_FLOAT_EQ(ImGui::GetStyle().FrameRounding, 0.0f);
}

TEST_F(UiCheckboxTest, DisabledOneStaysAsItIs) {
    bool value = true;
    int toggled = 0;
    show([&] {
        ImGui::BeginDisabled();
        toggled += Ui::checkbox("Box", &value);
        ImGui::EndDisabled();
    });
    input.idle(2);
    input.click(middle());
    EXPECT_EQ(toggled, 0);
    EXPECT_TRUE(value);
    EXPECT_EQ(colorsLeft, 0);
}

TEST_F(UiCheckboxTest, CollapsedWindowLeavesNothingPushed) {
    bool value = true;
    show([&] {
        ImGui::SetWindowCollapsed(true);
        EXPECT_FALSE(Ui::checkbox("Box", &value));
        EXPECT_FALSE(Ui::radioButton("Button", true));
    });
    input.idle(3);
    EXPECT_EQ(colorsLeft, 0);
    EXPECT_EQ(variablesLeft, 0);
    EXPECT_TRUE(value);
}

TEST_F(UiCheckboxTest, RadioButtonTellsOfAClick) {
    int clicked = 0;
    show([&] { clicked += Ui::radioButton("Button", false); });
    input.idle(2);
    input.click(middle());
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(colorsLeft, 0);
    EXPECT_EQ(variablesLeft, 0);
}

TEST_F(UiCheckboxTest, RadioButtonShowsWhetherItIsActive) {
    bool active = false;
    show([&] { Ui::radioButton("Button", active); });
    input.idle(2);
    const ImVec4 mark = ImGui::GetStyle().Colors[ImGuiCol_CheckMark];
    EXPECT_EQ(countOf(mark), 0);
    active = true;
    input.idle();
    EXPECT_GT(countOf(mark), 0);
}

TEST_F(UiCheckboxTest, RadioButtonHasOnePixelOfPadding) {
    show([&] { Ui::radioButton("Button", true); });
    input.idle(2);
    EXPECT_FLOAT_EQ(max.y - min.y, ImGui::GetFontSize() + 2.0f);
}

}}
