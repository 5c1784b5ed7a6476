#include "editor/Style.h"

#include <imgui.h>

namespace QuillmereEngine {

namespace {

ImVec4 color(const unsigned rgb, const float alpha = 1.0f) {
    return {float(rgb >> 16 & 0xff) / 255.0f, float(rgb >> 8 & 0xff) / 255.0f,
        float(rgb & 0xff) / 255.0f, alpha};
}

constexpr unsigned Sunken = 0x101216;
constexpr unsigned Surface = 0x1a1d23;
constexpr unsigned Raised = 0x242830;
constexpr unsigned Hovered = 0x303640;
constexpr unsigned Selected = 0x1c3452;
constexpr unsigned Line = 0x2c313a;
constexpr unsigned Text = 0xd7dae0;
constexpr unsigned DimText = 0x8b93a1;
constexpr unsigned Accent = 0x4d8fd6;

void setTextColors(ImVec4* const colors) {
    colors[ImGuiCol_Text] = color(Text);
    colors[ImGuiCol_TextDisabled] = color(DimText);
    colors[ImGuiCol_TextSelectedBg] = color(Selected);
    colors[ImGuiCol_CheckMark] = color(0xffffff);
}

void setWindowColors(ImVec4* const colors) {
    colors[ImGuiCol_WindowBg] = color(Surface);
    colors[ImGuiCol_ChildBg] = color(Surface, 0.0f);
    colors[ImGuiCol_PopupBg] = color(Raised);
    colors[ImGuiCol_MenuBarBg] = color(Raised);
    colors[ImGuiCol_Border] = color(Line);
    colors[ImGuiCol_BorderShadow] = color(0, 0.0f);
    colors[ImGuiCol_TitleBg] = color(Surface);
    colors[ImGuiCol_TitleBgActive] = color(Raised);
    colors[ImGuiCol_TitleBgCollapsed] = color(Surface);
    colors[ImGuiCol_ModalWindowDimBg] = color(0, 0.55f);
    colors[ImGuiCol_NavWindowingHighlight] = color(Accent);
    colors[ImGuiCol_NavWindowingDimBg] = color(0, 0.40f);
    colors[ImGuiCol_NavHighlight] = color(Accent);
}

void setWidgetColors(ImVec4* const colors) {
    /* Where text is written and read, so the background that has to be dark */
    colors[ImGuiCol_FrameBg] = color(Sunken);
    colors[ImGuiCol_FrameBgHovered] = color(Raised);
    colors[ImGuiCol_FrameBgActive] = color(Raised);
    colors[ImGuiCol_Button] = color(Raised);
    colors[ImGuiCol_ButtonHovered] = color(Hovered);
    colors[ImGuiCol_ButtonActive] = color(Accent, 0.70f);
    colors[ImGuiCol_Header] = color(Raised);
    colors[ImGuiCol_HeaderHovered] = color(Hovered);
    colors[ImGuiCol_HeaderActive] = color(Accent, 0.55f);
    colors[ImGuiCol_SliderGrab] = color(Accent);
    colors[ImGuiCol_SliderGrabActive] = color(0x6ba8ea);
    colors[ImGuiCol_Separator] = color(Line);
    colors[ImGuiCol_SeparatorHovered] = color(Accent, 0.70f);
    colors[ImGuiCol_SeparatorActive] = color(Accent);
    colors[ImGuiCol_ResizeGrip] = color(Line, 0.0f);
    colors[ImGuiCol_ResizeGripHovered] = color(Accent, 0.60f);
    colors[ImGuiCol_ResizeGripActive] = color(Accent, 0.90f);
    colors[ImGuiCol_DragDropTarget] = color(Accent);
}

void setBarColors(ImVec4* const colors) {
    colors[ImGuiCol_ScrollbarBg] = color(Sunken);
    colors[ImGuiCol_ScrollbarGrab] = color(0x3a404b);
    colors[ImGuiCol_ScrollbarGrabHovered] = color(0x4a525f);
    colors[ImGuiCol_ScrollbarGrabActive] = color(0x5a6473);
    /* The chosen tab looks like the content below it and stands out from the rest */
    colors[ImGuiCol_Tab] = color(Surface);
    colors[ImGuiCol_TabHovered] = color(Hovered);
    colors[ImGuiCol_TabActive] = color(0x2b4a6c);
    colors[ImGuiCol_TabUnfocused] = color(Surface);
    colors[ImGuiCol_TabUnfocusedActive] = color(0x2b4a6c);
}

void setShape(ImGuiStyle& style) {
    style.WindowPadding = {8.0f, 8.0f};
    style.FramePadding = {8.0f, 4.0f};
    style.ItemSpacing = {8.0f, 4.0f};
    style.ItemInnerSpacing = {4.0f, 4.0f};
    style.ScrollbarSize = 12.0f;
    style.WindowRounding = 0.0f;
    style.ChildRounding = 0.0f;
    style.PopupRounding = 4.0f;
    style.FrameRounding = 3.0f;
    style.TabRounding = 3.0f;
    style.GrabRounding = 3.0f;
    style.ScrollbarRounding = 6.0f;
    style.WindowBorderSize = 1.0f;
    style.FrameBorderSize = 0.0f;
    style.WindowTitleAlign = {0.0f, 0.5f};
    /* No arrow that collapses a panel in front of its name: it looks like part of a tree */
    style.WindowMenuButtonPosition = ImGuiDir_None;
}

}

void setEditorStyle(ImGuiStyle& style) {
    setShape(style);
    ImVec4* const colors = style.Colors;
    setTextColors(colors);
    setWindowColors(colors);
    setWidgetColors(colors);
    setBarColors(colors);
}

}
