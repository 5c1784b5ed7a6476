#include "editor/Style.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <imgui.h>

namespace QuillmereEngine { namespace {

/* Relative luminance and contrast as WCAG 2.1 defines them */
float luminance(const ImVec4& color) {
    const auto linear = [](const float c) {
        return c <= 0.03928f ? c / 12.92f : std::pow((c + 0.055f) / 1.055f, 2.4f);
    };
    return 0.2126f * linear(color.x) + 0.7152f * linear(color.y) + 0.0722f * linear(color.z);
}

float contrast(const ImVec4& a, const ImVec4& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05f) / (dark + 0.05f);
}

struct StyleTest: ::testing::Test {
    StyleTest() { setEditorStyle(style); }

    ImGuiStyle style;
};

TEST_F(StyleTest, TextColorsOfPanelsAreReadableInFrames) {
    const ImVec4 background = style.Colors[ImGuiCol_FrameBg];
    EXPECT_GE(contrast({1.0f, 0.0f, 0.0f, 1.0f}, background), 4.5f);
    EXPECT_GE(contrast({1.0f, 0.8f, 0.0f, 1.0f}, background), 7.0f);
    EXPECT_GE(contrast(style.Colors[ImGuiCol_Text], background), 7.0f);
    EXPECT_GE(contrast(style.Colors[ImGuiCol_TextDisabled], background), 4.5f);
}

/* 4.5 can't be had: that dark a selection wouldn't be seen. 3 is what is asked of large text. */
TEST_F(StyleTest, SelectedErrorsCanBeRead) {
    const ImVec4 background = style.Colors[ImGuiCol_TextSelectedBg];
    EXPECT_EQ(background.w, 1.0f);
    EXPECT_GE(contrast({1.0f, 0.0f, 0.0f, 1.0f}, background), 3.0f);
    EXPECT_GE(contrast(background, style.Colors[ImGuiCol_FrameBg]), 1.4f);
}

TEST_F(StyleTest, TextIsReadableOnTabsAndTitles) {
    for(const ImGuiCol color: {ImGuiCol_Tab, ImGuiCol_TabActive, ImGuiCol_TabHovered,
            ImGuiCol_TabUnfocused, ImGuiCol_TabUnfocusedActive, ImGuiCol_TitleBg,
            ImGuiCol_TitleBgActive, ImGuiCol_WindowBg, ImGuiCol_Button, ImGuiCol_MenuBarBg})
        EXPECT_GE(contrast(style.Colors[ImGuiCol_Text], style.Colors[color]), 4.5f)
            << ImGui::GetStyleColorName(color);
}

TEST_F(StyleTest, WindowsAreOpaque) {
    EXPECT_EQ(style.Colors[ImGuiCol_WindowBg].w, 1.0f);
    EXPECT_EQ(style.Colors[ImGuiCol_PopupBg].w, 1.0f);
}

}}
