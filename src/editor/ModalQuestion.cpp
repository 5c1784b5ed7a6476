#include "editor/ModalQuestion.h"

#include <imgui.h>

namespace QuillmereEngine {

namespace {

constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoCollapse |
    ImGuiWindowFlags_NoSavedSettings;

bool isPressed(const ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key), false); }

/* Buttons have the colour of popups, so they wouldn't be seen here */
bool drawButton(const char* const label, const ImGuiCol color, const ImVec2& size) {
    ImGui::PushStyleColor(ImGuiCol_Button, ImGui::GetStyleColorVec4(color));
    const bool out = ImGui::Button(label, size);
    ImGui::PopStyleColor();
    return out;
}

}

ModalQuestion::ModalQuestion(
    const char* const title, const std::array<const char*, 3>& answers, const float buttonWidth):
    _title{title},
    _answers{answers},
    _buttonWidth{buttonWidth} {}

std::optional<std::size_t> ModalQuestion::draw(const char* const text, const char* const hint) {
    if(!_isAsked)
        return {};
    /* A popup that is opened closes those that were open, so that no menu stays above the question */
    if(!ImGui::IsPopupOpen(_title))
        ImGui::OpenPopup(_title);
    const ImVec2 display = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos(
        {display.x * 0.5f, display.y * 0.5f}, ImGuiCond_Always, ImVec2{0.5f, 0.5f});
    if(!ImGui::BeginPopupModal(_title, nullptr, Flags))
        return {};

    ImGui::TextUnformatted(text);
    ImGui::TextDisabled("%s", hint);
    ImGui::Spacing();
    const std::optional<std::size_t> out = drawAnswers();
    if(out) {
        _isAsked = false;
        ImGui::CloseCurrentPopup();
    }
    ImGui::EndPopup();
    return out;
}

std::optional<std::size_t> ModalQuestion::drawAnswers() const {
    const ImVec2 size{ImGui::GetFontSize() * _buttonWidth, 0.0f};
    std::optional<std::size_t> out;
    for(std::size_t i = 0; i != _answers.size(); ++i) {
        if(i)
            ImGui::SameLine();
        if(drawButton(_answers[i], i ? ImGuiCol_FrameBg : ImGuiCol_TabActive, size))
            out = i;
    }
    if(isPressed(ImGuiKey_Enter) || isPressed(ImGuiKey_KeyPadEnter))
        out = 0;
    if(isPressed(ImGuiKey_Escape))
        out = _answers.size() - 1;
    return out;
}

}
