#include "editor/RecoveryQuestion.h"

#include <imgui.h>

namespace QuillmereEngine {

namespace {

constexpr const char* Title = "Recover changes";
constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoCollapse |
    ImGuiWindowFlags_NoSavedSettings;
/* In font sizes, so that the buttons look the same with any font */
constexpr float ButtonWidth = 8.0f;

bool isPressed(const ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key), false); }

/* Buttons have the colour of popups, so they wouldn't be seen here */
bool drawButton(const char* const label, const ImGuiCol color, const ImVec2& size) {
    ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(color));
    const bool out = ImGui::Button(label, size);
    ImGui::PopStyleColor();
    return out;
}

RecoveryAnswer drawAnswers() {
    const ImVec2 size{ImGui::GetFontSize() * ButtonWidth, 0.0f};
    RecoveryAnswer out = RecoveryAnswer::None;
    if(drawButton("Recover", ImGuiCol_TabActive, size) || isPressed(ImGuiKey_Enter) ||
        isPressed(ImGuiKey_KeyPadEnter))
        out = RecoveryAnswer::Recover;
    ImGui::SameLine();
    if(drawButton("Discard", ImGuiCol_FrameBg, size))
        out = RecoveryAnswer::Discard;
    ImGui::SameLine();
    if(drawButton("Keep for later", ImGuiCol_FrameBg, size) || isPressed(ImGuiKey_Escape))
        out = RecoveryAnswer::Keep;
    return out;
}

}

RecoveryAnswer RecoveryQuestion::draw(const std::string& project, const std::size_t changeCount) {
    if(!_isAsked)
        return RecoveryAnswer::None;
    /* A popup that is opened closes those that were open, so that no menu stays above the question */
    if(!ImGui::IsPopupOpen(Title))
        ImGui::OpenPopup(Title);
    const ImVec2 display = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos(
        {display.x * 0.5f, display.y * 0.5f}, ImGuiCond_Always, ImVec2{0.5f, 0.5f});
    if(!ImGui::BeginPopupModal(Title, nullptr, Flags))
        return RecoveryAnswer::None;

    ImGui::Text("The editor ended before %zu %s of %s %s saved.", changeCount,
        changeCount == 1 ? "change" : "changes", project.c_str(),
        changeCount == 1 ? "was" : "were");
    ImGui::TextDisabled("Recovered, they can be undone as one. Kept, they are offered again.");
    ImGui::Spacing();
    const RecoveryAnswer out = drawAnswers();
    if(out != RecoveryAnswer::None) {
        _isAsked = false;
        ImGui::CloseCurrentPopup();
    }
    ImGui::EndPopup();
    return out;
}

}
