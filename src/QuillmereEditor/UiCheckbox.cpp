#include "QuillmereEditor/Ui.h"

#include <imgui.h>

namespace QuillmereEngine {

namespace {

const ImVec4 CheckedBackground{0.125f, 0.23f, 0.35f, 1.0f};
const ImVec4 CheckedHighlight{0.25f, 0.46f, 0.70f, 1.0f};
const ImVec4 UncheckedBackground{0.29f, 0.29f, 0.29f, 0.44f};
const ImVec4 CheckMark{1.0f, 1.0f, 1.0f, 1.0f};

/* Gives the number of colours pushed. The caller pops as many, whatever the click made of the
   value in between. */
int pushCheckboxColors(const bool checked) {
    ImGui::PushStyleColor(ImGuiCol_FrameBg, checked ? CheckedBackground : UncheckedBackground);
    if(checked) {
        ImGui::PushStyleColor(ImGuiCol_FrameBgActive, CheckedHighlight);
        ImGui::PushStyleColor(ImGuiCol_FrameBgHovered, CheckedHighlight);
    }
    ImGui::PushStyleColor(ImGuiCol_CheckMark, CheckMark);
    return checked ? 4 : 2;
}

}

bool Ui::checkbox(const char* const label, bool* const value) {
    const int colorCount = pushCheckboxColors(*value);
    ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, ImVec2{1.0f, 1.0f});
    ImGui::PushStyleVar(ImGuiStyleVar_FrameRounding, 4.0f);
    const bool pressed = ImGui::Checkbox(label, value);
    ImGui::PopStyleVar(2);
    ImGui::PopStyleColor(colorCount);
    return pressed;
}

bool Ui::radioButton(const char* const label, const bool active) {
    ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, ImVec2{1.0f, 1.0f});
    const bool pressed = ImGui::RadioButton(label, active);
    ImGui::PopStyleVar();
    return pressed;
}

}
