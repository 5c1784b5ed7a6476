#include "editor/QuitQuestion.h"

#include <imgui.h>

namespace QuillmereEngine {

namespace {

constexpr const char* Title = "Unsaved changes";
constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoCollapse |
    ImGuiWindowFlags_NoSavedSettings;
/* In font sizes, so that the buttons look the same with any font */
constexpr float ButtonWidth = 6.0f;

bool isPressed(const ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key), false); }

/* Buttons have the colour of popups, so they wouldn't be seen here */
bool drawButton(const char* const label, const ImGuiCol color, const ImVec2& size) {
    ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(color));
    const bool out = ImGui::Button(label, size);
    ImGui::PopStyleColor();
    return out;
}

QuitAnswer drawAnswers() {
    const ImVec2 size{ImGui::GetFontSize() * ButtonWidth, 0.0f};
    QuitAnswer out = QuitAnswer::None;
    if(drawButton("Save", ImGuiCol_TabActive, size) || isPressed(ImGuiKey_Enter) ||
        isPressed(ImGuiKey_KeyPadEnter))
        out = QuitAnswer::Save;
    ImGui::SameLine();
    if(drawButton("Discard", ImGuiCol_FrameBg, size))
        out = QuitAnswer::Discard;
    ImGui::SameLine();
    if(drawButton("Cancel", ImGuiCol_FrameBg, size) || isPressed(ImGuiKey_Escape))
        out = QuitAnswer::Cancel;
    return out;
}

}

QuitAnswer QuitQuestion::draw(const std::string& project) {
    if(!_isAsked)
        return QuitAnswer::None;
    /* A popup that is opened closes those that were open, so that no menu stays above the question */
    if(!ImGui::IsPopupOpen(Title))
        ImGui::OpenPopup(Title);
    const ImVec2 display = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos(
        {display.x * 0.5f, display.y * 0.5f}, ImGuiCond_Always, ImVec2{0.5f, 0.5f});
    if(!ImGui::BeginPopupModal(Title, nullptr, Flags))
        return QuitAnswer::None;

    ImGui::Text("Save the changes to %s?", project.c_str());
    ImGui::TextDisabled("They are lost if they aren't saved.");
    ImGui::Spacing();
    const QuitAnswer out = drawAnswers();
    if(out != QuitAnswer::None) {
        _isAsked = false;
        ImGui::CloseCurrentPopup();
    }
    ImGui::EndPopup();
    return out;
}

}
