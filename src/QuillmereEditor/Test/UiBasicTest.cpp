#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Ui.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using Testing::drawnQuads;
using Testing::drawnRectangles;
using Testing::drawnTexts;
using Testing::UiPanel;

constexpr unsigned int Color = 0xff123456;

/* Corners at which a list has no vertex: those that are round */
struct RoundCorners {
    bool upperLeft, upperRight, lowerRight, lowerLeft;
};

RoundCorners roundCorners(const ImU32 color, const ImVec2& min, const ImVec2& max) {
    RoundCorners out{true, true, true, true};
    for(const ImDrawVert& vertex: Testing::drawnVertices("Panel")) {
        if(vertex.col != color)
            continue;
        const bool left = vertex.pos.x == min.x, right = vertex.pos.x == max.x;
        const bool top = vertex.pos.y == min.y, bottom = vertex.pos.y == max.y;
        out.upperLeft = out.upperLeft && !(left && top);
        out.upperRight = out.upperRight && !(right && top);
        out.lowerRight = out.lowerRight && !(right && bottom);
        out.lowerLeft = out.lowerLeft && !(left && bottom);
    }
    return out;
}

struct UiBasicTest: ::testing::Test {
    UiBasicTest() {
        /* With smoothing the corners lie half a pixel outside */
        panel.frame.io();
        ImGui::GetStyle().AntiAliasedFill = false;
        ImGui::GetStyle().AntiAliasedLines = false;
    }

    /* The corners of what a test draws there itself, apart from the window's own */
    static std::vector<ImDrawVert> verticesNear(const ImVec2& position) {
        std::vector<ImDrawVert> out;
        for(const ImDrawVert& vertex: Testing::drawnVertices("Panel"))
            if(vertex.pos.x > position.x - 4.0f && vertex.pos.y > position.y - 4.0f &&
                vertex.pos.x < position.x + 100.0f && vertex.pos.y < position.y + 100.0f)
                out.push_back(vertex);
        return out;
    }

    static std::size_t countOf(const ImU32 color) {
        std::size_t count = 0;
        for(const ImDrawVert& vertex: verticesNear({100.0f, 100.0f}))
            count += vertex.col == color ? 1 : 0;
        return count;
    }

    UiPanel panel;
};

TEST_F(UiBasicTest, AlignedTextIsAsHighAsAFrameAndCentred) {
    ImGui::GetStyle().FramePadding = ImVec2{4.0f, 9.0f};
    panel.show([this] {
        Ui::alignedText("Text");
        panel.mark();
    });
    const Testing::ScreenBox box = panel.box();
    EXPECT_FLOAT_EQ(box.max.y - box.min.y, ImGui::GetFontSize() + 18.0f);
    EXPECT_FLOAT_EQ(box.max.x - box.min.x, ImGui::CalcTextSize("Text").x);
    const Testing::DrawnText text = drawnTexts("Panel").back();
    EXPECT_EQ(text.text, "Text");
    EXPECT_GT(text.position.y, box.min.y + 8.0f);
    EXPECT_LT(text.position.y, box.min.y + 9.0f + ImGui::GetFontSize() * 0.5f);
}

TEST_F(UiBasicTest, AlignedTextLinesUpWithAWidgetInItsRow) {
    panel.show([this] {
        Ui::alignedText("Text");
        ImGui::SameLine();
        float value = 0.0f;
        ImGui::DragFloat("##value", &value, 1.0f, 0.0f, 0.0f, "Value");
        panel.mark();
    });
    std::vector<Testing::DrawnText> texts = drawnTexts("Panel");
    ASSERT_GE(texts.size(), 2u);
    std::vector<float> tops;
    for(const Testing::DrawnQuad& quad: drawnQuads("Panel"))
        if(quad.glyph == 'T' || quad.glyph == 'V')
            tops.push_back(quad.min.y);
    ASSERT_EQ(tops.size(), 2u);
    EXPECT_FLOAT_EQ(tops[0], tops[1]);
}

TEST_F(UiBasicTest, AlignedTextHidesItsSuffix) {
    panel.show([this] {
        Ui::alignedText("Text##hidden");
        panel.mark();
    });
    EXPECT_EQ(drawnTexts("Panel").back().text, "Text");
    EXPECT_FLOAT_EQ(panel.box().max.x - panel.box().min.x, ImGui::CalcTextSize("Text").x);
}

TEST_F(UiBasicTest, AlignedTextOfNothingHasNoWidth) {
    for(const char* const text: {"", "##hidden"}) {
        panel.show([] {});
        const std::size_t before = drawnQuads("Panel").size();
        panel.show([&] {
            Ui::alignedText(text);
            panel.mark();
        });
        EXPECT_EQ(drawnQuads("Panel").size(), before) << text;
        EXPECT_FLOAT_EQ(panel.box().max.x, panel.box().min.x);
        EXPECT_GT(panel.box().max.y, panel.box().min.y);
    }
}

TEST_F(UiBasicTest, SkippedWindowGetsNoItems) {
    panel.show([] {
        ImGui::SetWindowCollapsed(true);
        ImGuiWindow& window = *ImGui::GetCurrentWindow();
        if(!window.SkipItems)
            return;
        const ImVec2 before = window.DC.CursorMaxPos;
        Ui::alignedText("Text");
        EXPECT_FALSE(Ui::buttonGrouped("Button", "id", {}));
        EXPECT_EQ(window.DC.CursorMaxPos.x, before.x);
        EXPECT_EQ(window.DC.CursorMaxPos.y, before.y);
    });
    panel.input.idle(2);
    for(const Testing::DrawnText& text: drawnTexts("Panel"))
        EXPECT_EQ(text.text, "Panel");
}

TEST_F(UiBasicTest, LabelOpensTheColumnAtAThird) {
    float left = 0.0f, width = 0.0f, start = 0.0f;
    panel.show([&] {
        start = ImGui::GetWindowPos().x;
        Ui::alignedText("before");
        width = ImGui::GetContentRegionAvail().x;
        Ui::label("Label");
        left = ImGui::GetCursorScreenPos().x;
    });
    EXPECT_GT(width, 100.0f);
    EXPECT_FLOAT_EQ(left, start + width * 0.33f);
}

TEST_F(UiBasicTest, IconButtonHasItsPaddingAndId) {
    int pressed = 0;
    ImGuiID withId = 0, withoutId = 0, expectedWithId = 0, expectedWithoutId = 0;
    panel.show([&] {
        pressed += Ui::iconButton("X", "id");
        withId = ImGui::GetItemID();
        panel.mark();
        Ui::iconButton("X", nullptr);
        withoutId = ImGui::GetItemID();
        expectedWithoutId = ImGui::GetID("X");
        ImGui::PushID("id");
        expectedWithId = ImGui::GetID("X");
        ImGui::PopID();
    });
    const Testing::ScreenBox box = panel.box();
    EXPECT_FLOAT_EQ(box.max.x - box.min.x, ImGui::CalcTextSize("X").x + 10.0f);
    EXPECT_FLOAT_EQ(box.max.y - box.min.y, ImGui::GetFontSize() + 10.0f);
    EXPECT_EQ(withId, expectedWithId);
    EXPECT_EQ(withoutId, expectedWithoutId);
    panel.input.click(box.center());
    EXPECT_EQ(pressed, 1);
}

TEST_F(UiBasicTest, FrameRoundsTheSidesItIsTold) {
    const ImVec2 min{100.0f, 100.0f}, max{160.0f, 140.0f};
    for(const bool left: {false, true})
        for(const bool right: {false, true}) {
            panel.show([&] { renderFrame(min, max, Color, false, 8.0f, left, right); });
            const RoundCorners corners = roundCorners(Color, min, max);
            EXPECT_EQ(corners.upperLeft, left);
            EXPECT_EQ(corners.lowerLeft, left);
            EXPECT_EQ(corners.upperRight, right);
            EXPECT_EQ(corners.lowerRight, right);
        }
}

TEST_F(UiBasicTest, FrameHasABorderIfTheStyleHas) {
    ImGuiStyle& style = ImGui::GetStyle();
    style.Colors[ImGuiCol_Border] = ImVec4{1.0f, 0.0f, 0.0f, 1.0f};
    style.Colors[ImGuiCol_BorderShadow] = ImVec4{0.0f, 1.0f, 0.0f, 1.0f};
    style.WindowBorderSize = 0.0f;
    bool border = true;
    panel.show([&] {
        renderFrame(
            ImVec2{100.0f, 100.0f}, ImVec2{160.0f, 140.0f}, Color, border, 0.0f, false, false);
    });
    EXPECT_EQ(countOf(0xff0000ff), 0);
    EXPECT_EQ(countOf(0xff00ff00), 0);

    style.FrameBorderSize = 1.0f;
    panel.input.idle();
    EXPECT_GT(countOf(0xff0000ff), 0);
    ASSERT_GT(countOf(0xff00ff00), 0);
    float shadowLeft = 1000.0f, borderLeft = 1000.0f;
    std::size_t firstShadow = 0, firstBorder = 0, i = 0;
    for(const ImDrawVert& vertex: verticesNear({100.0f, 100.0f})) {
        ++i;
        if(vertex.col == 0xff00ff00) {
            shadowLeft = std::min(shadowLeft, vertex.pos.x);
            firstShadow = firstShadow ? firstShadow : i;
        } else if(vertex.col == 0xff0000ff) {
            borderLeft = std::min(borderLeft, vertex.pos.x);
            firstBorder = firstBorder ? firstBorder : i;
        }
    }
    EXPECT_NEAR(shadowLeft, borderLeft + 1.0f, 0.01f);
    EXPECT_LT(firstShadow, firstBorder);

    border = false;
    panel.input.idle();
    EXPECT_EQ(countOf(0xff0000ff), 0);
}

TEST_F(UiBasicTest, GroupedButtonsRoundTheirOuterSides) {
    ImGui::GetStyle().FrameRounding = 6.0f;
    ImGui::GetStyle().ItemSpacing.x = 0.0f;
    ImGui::GetStyle().Colors[ImGuiCol_Button] = ImGui::ColorConvertU32ToFloat4(Color);
    struct {
        Ui::ButtonFlags flags;
        bool left, right;
    } const cases[]{{{}, false, false}, {Ui::ButtonFlag::RoundLeft, true, false},
        {Ui::ButtonFlag::RoundRight, false, true},
        {Ui::ButtonFlag::RoundLeft | Ui::ButtonFlag::RoundRight, true, true}};
    for(const auto& i: cases) {
        panel.show([&] {
            Ui::buttonGrouped("Button", nullptr, i.flags);
            panel.mark();
        });
        const RoundCorners corners = roundCorners(Color, panel.box().min, panel.box().max);
        EXPECT_EQ(corners.upperLeft, i.left);
        EXPECT_EQ(corners.lowerLeft, i.left);
        EXPECT_EQ(corners.upperRight, i.right);
        EXPECT_EQ(corners.lowerRight, i.right);
    }
}

TEST_F(UiBasicTest, GroupedButtonFollowsTheMouse) {
    ImGuiStyle& style = ImGui::GetStyle();
    style.Colors[ImGuiCol_Button] = ImVec4{1.0f, 0.0f, 0.0f, 1.0f};
    style.Colors[ImGuiCol_ButtonHovered] = ImVec4{0.0f, 1.0f, 0.0f, 1.0f};
    style.Colors[ImGuiCol_ButtonActive] = ImVec4{0.0f, 0.0f, 1.0f, 1.0f};
    int pressed = 0;
    ImGuiID id = 0, expected = 0;
    panel.show([&] {
        pressed += Ui::buttonGrouped("Button", "id", {});
        id = ImGui::GetItemID();
        panel.mark();
        ImGui::PushID("id");
        expected = ImGui::GetID("Button");
        ImGui::PopID();
    });
    EXPECT_EQ(id, expected);
    EXPECT_EQ(drawnRectangles(0xff0000ff, "Panel").size(), 1);
    const Testing::ScreenBox box = panel.box();
    EXPECT_FLOAT_EQ(
        box.max.x - box.min.x, ImGui::CalcTextSize("Button").x + 2.0f * style.FramePadding.x);
    EXPECT_FLOAT_EQ(box.max.y - box.min.y, ImGui::GetFontSize() + 2.0f * style.FramePadding.y);
    panel.input.moveTo(box.center());
    EXPECT_EQ(drawnRectangles(0xff00ff00, "Panel").size(), 1);
    panel.input.press();
    EXPECT_EQ(drawnRectangles(0xffff0000, "Panel").size(), 1);
    EXPECT_EQ(pressed, 0);
    panel.input.release();
    EXPECT_EQ(pressed, 1);
    panel.input.idle();
    EXPECT_EQ(pressed, 1);
}

TEST_F(UiBasicTest, BorderIsAsRoundAsItsFrame) {
    ImGuiStyle& style = ImGui::GetStyle();
    style.Colors[ImGuiCol_Border] = ImVec4{1.0f, 0.0f, 0.0f, 1.0f};
    style.Colors[ImGuiCol_BorderShadow] = ImVec4{0.0f, 1.0f, 0.0f, 1.0f};
    style.WindowBorderSize = 0.0f;
    style.FrameBorderSize = 1.0f;
    const ImVec2 min{100.0f, 100.0f}, max{160.0f, 140.0f};
    struct {
        ImU32 color;
        float offset;
    } const borders[]{{0xff0000ff, 0.0f}, {0xff00ff00, 1.0f}};
    for(const bool left: {false, true})
        for(const bool right: {false, true}) {
            panel.show([&] { renderFrame(min, max, Color, true, 8.0f, left, right); });
            for(const auto& border: borders) {
                /* A line goes through the middle of its pixels, and is one wide */
                bool isLeftSharp = false, isRightSharp = false;
                for(const ImDrawVert& vertex: Testing::drawnVertices("Panel")) {
                    if(vertex.col != border.color ||
                        std::abs(vertex.pos.y - min.y - border.offset) > 1.5f)
                        continue;
                    isLeftSharp = isLeftSharp ||
                        std::abs(vertex.pos.x - min.x - border.offset) < 1.5f;
                    isRightSharp = isRightSharp ||
                        std::abs(vertex.pos.x - max.x - border.offset) < 1.5f;
                }
                EXPECT_EQ(isLeftSharp, !left);
                EXPECT_EQ(isRightSharp, !right);
            }
        }
}

TEST_F(UiBasicTest, GroupedButtonHasTheBorderOfTheStyle) {
    ImGuiStyle& style = ImGui::GetStyle();
    style.Colors[ImGuiCol_Border] = ImVec4{1.0f, 0.0f, 0.0f, 1.0f};
    style.WindowBorderSize = 0.0f;
    style.FrameBorderSize = 1.0f;
    panel.show([] {
        ImGui::SetCursorScreenPos({100.0f, 100.0f});
        Ui::buttonGrouped("Button", nullptr, {});
    });
    EXPECT_GT(countOf(0xff0000ff), 0);
}

TEST_F(UiBasicTest, GroupedButtonAlignsItsTextAsTheStyleSays) {
    ImGuiStyle& style = ImGui::GetStyle();
    style.FramePadding = ImVec2{20.0f, 10.0f};
    panel.show([this] {
        Ui::buttonGrouped("Button##hidden", nullptr, {});
        panel.mark();
    });
    const Testing::DrawnText text = drawnTexts("Panel").back();
    EXPECT_EQ(text.text, "Button");
    EXPECT_NEAR(text.position.x, panel.box().min.x + 20.0f, 2.0f);
    EXPECT_NEAR(text.position.y, panel.box().min.y + 10.0f, ImGui::GetFontSize() * 0.5f);
}

TEST_F(UiBasicTest, WhatCannotBeSeenIsNotDrawnAndTakesItsRoom) {
    bool pressed = false;
    float alignedHeight = 0.0f, buttonHeight = 0.0f;
    panel.show([&] {
        /* The keyboard is where the first item of a window is, and that one is always drawn */
        ImGui::Button("First");
        ImGui::SetCursorPosY(5000.0f);
        float top = ImGui::GetCursorPosY();
        Ui::alignedText("Text");
        alignedHeight = ImGui::GetCursorPosY() - top;
        top = ImGui::GetCursorPosY();
        pressed = Ui::buttonGrouped("Button", "id", {}) || pressed;
        buttonHeight = ImGui::GetCursorPosY() - top;
    });
    EXPECT_FALSE(pressed);
    EXPECT_FLOAT_EQ(alignedHeight, ImGui::GetFrameHeightWithSpacing());
    EXPECT_FLOAT_EQ(buttonHeight, ImGui::GetFrameHeightWithSpacing());
    for(const ImDrawVert& vertex: Testing::drawnVertices("Panel"))
        EXPECT_LT(vertex.pos.y, 1000.0f);
}

TEST_F(UiBasicTest, GroupedButtonShowsTheKeyboardsPlace) {
    panel.frame.io().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    ImGui::GetStyle().Colors[ImGuiCol_NavHighlight] = ImVec4{1.0f, 0.0f, 0.0f, 1.0f};
    int pressed = 0;
    panel.show([&] {
        ImGui::SetCursorScreenPos({100.0f, 100.0f});
        pressed += Ui::buttonGrouped("Button", nullptr, {});
        panel.mark();
    });
    panel.input.click(panel.box().center());
    EXPECT_EQ(pressed, 1);
    EXPECT_EQ(countOf(0xff0000ff), 0);
    panel.input.moveTo({500.0f, 400.0f});
    panel.input.type(ImGuiKey_DownArrow);
    panel.input.idle(2);
    EXPECT_GT(countOf(0xff0000ff), 0);
}

TEST_F(UiBasicTest, GroupedButtonIsLoggedInBrackets) {
    bool log = false;
    panel.show([&] {
        if(log)
            ImGui::LogToClipboard();
        Ui::buttonGrouped("Button##hidden", nullptr, {});
        if(log)
            ImGui::LogFinish();
    });
    log = true;
    panel.input.idle();
    EXPECT_NE(panel.frame.clipboard.find("[ Button ]"), std::string::npos) << panel.frame.clipboard;
}

TEST_F(UiBasicTest, TextShowsTheStringAlone) {
    panel.setDocument(R"({"name":"Lamp##x"})");
    panel.show([this] {
        panel.ui.text("name");
        panel.mark();
    });
    EXPECT_EQ(drawnTexts("Panel").back().text, "Lamp##x") << "not a label, so nothing is hidden";
    for(const Testing::DrawnText& text: drawnTexts("Panel"))
        EXPECT_NE(text.text, "name");

    panel.input.moveTo(panel.box().center());
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "");
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "/name");
    panel.input.hold(ImGuiKeyModFlags_None);

    panel.input.press(1);
    panel.input.release(1);
    panel.input.idle(3);
    EXPECT_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 0);
}

TEST_F(UiBasicTest, TextOfAnythingElseIsEmpty) {
    panel.setDocument(R"({"textOfNumber":1})");
    panel.show([this] { panel.ui.text("textOfNumber"); });
    EXPECT_EQ(panel.warnings, "Ui: expected a string at /textOfNumber but got a number\n");
    EXPECT_EQ(drawnTexts("Panel").size(), 1) << "the window's title";
}

}}
