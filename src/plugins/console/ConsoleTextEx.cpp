#include "plugins/console/ConsoleTextEx.h"

#include <algorithm>
#include <limits>

#include <imgui.h>
#include <imgui_internal.h>

#include "plugins/console/consoleTextFrame.h"

using namespace QuillmereEngine;

namespace {

/* Dear ImGui counts in int what a copy of the text takes as UTF-8: up to three bytes for each that
   was malformed */
constexpr int MaxTextSize = std::numeric_limits<int>::max() / 3 - 1;

ImVec2 resolveSize(const ImVec2& requested) {
    const float defaultHeight = ImGui::GetFontSize() * 8.0f +
        ImGui::GetStyle().FramePadding.y * 2.0f;
    return ImGui::CalcItemSize(requested, ImGui::CalcItemWidth(), defaultHeight);
}

/* Gives whether the frame or the label can be seen. If not, the layout has moved past them. */
bool addItem(const ImGuiID id, const ImRect& frame, const float labelWidth) {
    const ImGuiStyle& style = ImGui::GetStyle();
    ImRect total = frame;
    if(labelWidth > 0.0f)
        total.Max.x += style.ItemInnerSpacing.x + labelWidth;
    if(ImGui::ItemAdd(total, id, &frame, 0))
        return true;
    ImGui::ItemSize(total, style.FramePadding.y);
    return false;
}

/* As ImGui::BeginChildFrame(), but as an item with the ID of the widget */
bool beginChild(const char* const label, const ImGuiID id, const ImVec2& size) {
    const ImGuiStyle& style = ImGui::GetStyle();
    ImGui::PushStyleColor(ImGuiCol_ChildBg, style.Colors[ImGuiCol_FrameBg]);
    ImGui::PushStyleVar(ImGuiStyleVar_ChildRounding, style.FrameRounding);
    ImGui::PushStyleVar(ImGuiStyleVar_ChildBorderSize, style.FrameBorderSize);
    ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, style.FramePadding);
    const bool isVisible = ImGui::BeginChildEx(
        label, id, size, true, ImGuiWindowFlags_NoMove | ImGuiWindowFlags_AlwaysUseWindowPadding);
    ImGui::PopStyleVar(3);
    ImGui::PopStyleColor();
    return isVisible;
}

/* Takes the child window that was just begun as the place to draw into */
void enterChild(ConsoleTextFrame& frame) {
    ImGuiWindow* const child = frame.context.CurrentWindow;
    frame.child = child;
    /* So that the keyboard navigation can go into it */
    child->DC.NavLayersActiveMaskNext = short(
        child->DC.NavLayersActiveMaskNext | (1 << child->DC.NavLayerCurrent));
    frame.innerSize = ImVec2{frame.frameSize.x - child->ScrollbarSizes.x, frame.frameSize.y};
    frame.clip = ImVec4{frame.frame.Min.x, frame.frame.Min.y, frame.frame.Min.x + frame.innerSize.x,
        frame.frame.Min.y + frame.innerSize.y};
    frame.origin = child->DC.CursorPos;
}

void drawLabel(const char* const label, const ImRect& frame) {
    const ImGuiStyle& style = ImGui::GetStyle();
    const ImVec2 position{
        frame.Max.x + style.ItemInnerSpacing.x, frame.Min.y + style.FramePadding.y};
    ImGui::RenderText(position, label, nullptr, true);
}

void submitContent(const ConsoleTextFrame& frame, const bool scrollToBottom) {
    if(scrollToBottom)
        ImGui::SetScrollY(frame.child->ScrollMax.y);
    /* One row more than there are, to be scrolled into */
    ImGui::Dummy(ImVec2{frame.innerSize.x, frame.contentHeight + ImGui::GetFontSize()});
}

}

bool ConsoleTextEx(const char* const label, const StringArrayView lines, const char* const text,
    const int textSize, const bool showInfo, const bool showWarnings, const bool showErrors,
    const bool filtersChanged, const bool scrollToBottom, const ImVec2& size, const int flags) {
    ImGuiWindow* const window = ImGui::GetCurrentWindow();
    if(window->SkipItems)
        return false;

    ImGui::BeginGroup();
    const ImGuiID id = window->GetID(label);
    const float labelWidth = ImGui::CalcTextSize(label, nullptr, true).x;
    const ImVec2 frameSize = resolveSize(size);
    const ImVec2 position = window->DC.CursorPos;
    const ImRect frameRect{
        position.x, position.y, position.x + frameSize.x, position.y + frameSize.y};
    if(!addItem(id, frameRect, labelWidth)) {
        ImGui::EndGroup();
        return false;
    }

    ConsoleTextFrame frame{lines, text, textSize, std::clamp(textSize, 0, MaxTextSize),
        {showErrors, showWarnings, showInfo}, filtersChanged, flags, *ImGui::GetCurrentContext(),
        window, id, frameRect, frameSize};
    frame.itemStatus = frame.context.LastItemData.StatusFlags;

    if(!beginChild(label, id, frameSize)) {
        ImGui::EndChild();
        ImGui::EndGroup();
        return false;
    }

    enterChild(frame);
    updateActivation(frame);
    updateText(frame);
    handleInput(frame);
    layOutText(frame);
    drawText(frame);
    submitContent(frame, scrollToBottom);
    ImGui::EndChild();
    ImGui::EndGroup();

    if(frame.context.LogEnabled)
        ImGui::LogRenderedText(&frame.origin, text, text + frame.textLength);
    if(labelWidth > 0.0f)
        drawLabel(label, frameRect);
    return false;
}
