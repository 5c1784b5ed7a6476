#include "QuillmereEditor/Ui.h"

#include <cstring>

#include <imgui.h>
#define IMGUI_DEFINE_MATH_OPERATORS
#include <imgui_internal.h>

#include "QuillmereEditor/uiProperty.h"

using namespace Corrade;

namespace {

/* Of the width that a row has, for its label */
constexpr float LabelShare = 0.33f;

const ImVec2 IconPadding{5.0f, 5.0f};

ImDrawFlags cornersOf(const bool roundLeft, const bool roundRight) {
    if(roundLeft)
        return roundRight ? ImDrawFlags_RoundCornersAll : ImDrawFlags_RoundCornersLeft;
    return roundRight ? ImDrawFlags_RoundCornersRight : ImDrawFlags_RoundCornersNone;
}

ImGuiCol buttonColor(const bool hovered, const bool held) {
    if(hovered)
        return held ? ImGuiCol_ButtonActive : ImGuiCol_ButtonHovered;
    return ImGuiCol_Button;
}

/* Does nothing for null */
class PushedId {
public:
    explicit PushedId(const char* const id): _isPushed{id != nullptr} {
        if(_isPushed)
            ImGui::PushID(id);
    }
    PushedId(const PushedId&) = delete;
    PushedId& operator=(const PushedId&) = delete;
    ~PushedId() {
        if(_isPushed)
            ImGui::PopID();
    }

private:
    bool _isPushed;
};

}

void renderFrame(const ImVec2 min, const ImVec2 max, const unsigned int color, const bool border,
    const float rounding, const bool roundLeft, const bool roundRight) {
    const ImDrawFlags corners = cornersOf(roundLeft, roundRight);
    ImDrawList& list = *ImGui::GetWindowDrawList();
    list.AddRectFilled(min, max, color, rounding, corners);

    const float borderSize = ImGui::GetStyle().FrameBorderSize;
    if(!border || borderSize <= 0.0f)
        return;
    const ImVec2 shadow{1.0f, 1.0f};
    list.AddRect(min + shadow, max + shadow, ImGui::GetColorU32(ImGuiCol_BorderShadow, 1.0f),
        rounding, corners, borderSize);
    list.AddRect(
        min, max, ImGui::GetColorU32(ImGuiCol_Border, 1.0f), rounding, corners, borderSize);
}

namespace QuillmereEngine {

void Ui::alignedText(const char* const text) {
    ImGuiWindow& window = *ImGui::GetCurrentWindow();
    if(window.SkipItems)
        return;

    const float padding = ImGui::GetStyle().FramePadding.y;
    const ImVec2 size = ImGui::CalcTextSize(text, nullptr, true, -1.0f);
    const ImVec2 position = window.DC.CursorPos;
    const ImRect rectangle{position, position + ImVec2{size.x, size.y + 2.0f * padding}};
    ImGui::ItemSize(rectangle, padding);
    const bool visible = ImGui::ItemAdd(rectangle, 0, nullptr, 0);
    if(size.x > 0.0f && visible)
        ImGui::RenderTextClipped(rectangle.Min, rectangle.Max, text, text + std::strlen(text),
            nullptr, ImVec2{0.0f, 0.5f}, nullptr);
}

void Ui::label(const char* const text) {
    alignedText(text);
    ImGui::SameLine(ImGui::GetContentRegionAvail().x * LabelShare, -1.0f);
}

bool Ui::iconButton(const char* const label, const char* const id) {
    const PushedId pushedId{id};
    ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, IconPadding);
    const bool pressed = ImGui::Button(label, ImVec2{0.0f, 0.0f});
    ImGui::PopStyleVar(1);
    return pressed;
}

bool Ui::buttonGrouped(const char* const label, const char* const id, const ButtonFlags flags) {
    const PushedId pushedId{id};
    ImGuiWindow& window = *ImGui::GetCurrentWindow();
    if(window.SkipItems)
        return false;

    const ImGuiStyle& style = ImGui::GetStyle();
    const ImGuiID itemId = window.GetID(label, nullptr);
    const ImVec2 labelSize = ImGui::CalcTextSize(label, nullptr, true, -1.0f);
    const ImVec2 padded = labelSize + style.FramePadding + style.FramePadding;
    const ImVec2 size = ImGui::CalcItemSize(ImVec2{0.0f, 0.0f}, padded.x, padded.y);
    const ImRect box{window.DC.CursorPos, window.DC.CursorPos + size};
    ImGui::ItemSize(size, style.FramePadding.y);
    if(!ImGui::ItemAdd(box, itemId, nullptr, 0))
        return false;

    bool hovered, held;
    const bool pressed = ImGui::ButtonBehavior(box, itemId, &hovered, &held, 0);
    ImGui::RenderNavHighlight(box, itemId, ImGuiNavHighlightFlags_TypeDefault);
    renderFrame(box.Min, box.Max, ImGui::GetColorU32(buttonColor(hovered, held), 1.0f), true,
        style.FrameRounding, bool(flags & ButtonFlag::RoundLeft),
        bool(flags & ButtonFlag::RoundRight));
    if(ImGui::GetCurrentContext()->LogEnabled)
        ImGui::LogSetNextTextDecoration("[", "]");
    ImGui::RenderTextClipped(box.Min + style.FramePadding, box.Max - style.FramePadding, label,
        nullptr, &labelSize, style.ButtonTextAlign, &box);
    return pressed;
}

void Ui::text(const char* const label) {
    const UiProperty property{*this, label};
    ImGui::TextUnformatted(property.string(), nullptr);
}

}
