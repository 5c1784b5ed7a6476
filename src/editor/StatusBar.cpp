#include "editor/StatusBar.h"

#include <algorithm>

#include <imgui.h>
#include <imgui_internal.h>

namespace QuillmereEngine {

namespace {

const ImVec4 WarningColor{1.0f, 0.8f, 0.0f, 1.0f};
constexpr const char* WarningIcon = "\xef\x81\xb1";
constexpr float Gap = 24.0f;

constexpr ImGuiWindowFlags BarFlags = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
    ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoNav | ImGuiWindowFlags_NoFocusOnAppearing;

std::string grouped(const std::size_t number) {
    std::string out = std::to_string(number);
    for(std::size_t i = out.size(); i > 3; i -= 3)
        out.insert(i - 3, ",");
    return out;
}

std::string megabytes(const std::uint64_t bytes) {
    const std::uint64_t tenths = bytes / 100'000;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " MB";
}

void drawRight(const std::string& text) {
    const float width = ImGui::CalcTextSize(text.c_str()).x;
    const float right = ImGui::GetWindowContentRegionMax().x - width;
    ImGui::SameLine();
    /* A long path makes way for what's left of it */
    if(right < ImGui::GetCursorPosX() + Gap)
        return;
    ImGui::SetCursorPosX(right);
    ImGui::TextDisabled("%s", text.c_str());
}

void drawContent(const Status& status) {
    ImGui::TextUnformatted(lineCountText(status.lineCount).c_str());
    if(ImGui::IsItemHovered())
        ImGui::SetTooltip("%s", loadedModulesText(status.loadedModules).c_str());
    if(const std::string text = status.feed ? feedText(*status.feed) : ""; !text.empty()) {
        ImGui::SameLine(0.0f, Gap);
        ImGui::TextDisabled("%s", text.c_str());
    }
    if(const std::string text = failedModulesText(status.failedModules); !text.empty()) {
        ImGui::SameLine(0.0f, Gap);
        ImGui::TextColored(WarningColor, "%s %s", WarningIcon, text.c_str());
    }
    if(!status.project.empty())
        drawRight(status.project);
}

}

std::string lineCountText(const std::size_t count) {
    return grouped(count) + (count == 1 ? " line" : " lines");
}

std::string feedText(const FeedProgress& feed) {
    if(feed.isFinished)
        return {};
    if(!feed.size)
        return "Following " + feed.name + ": " + megabytes(feed.bytes);
    /* The file may have grown since it was opened */
    const std::uint64_t percent = std::min<std::uint64_t>(
        std::uint64_t(double(feed.bytes) / double(feed.size) * 100.0), 100);
    return "Reading " + feed.name + ": " + std::to_string(percent) + " %";
}

std::string loadedModulesText(const std::vector<std::string>& modules) {
    std::string out = modules.empty() ? "No modules" : "Modules:";
    for(const std::string& module: modules)
        out += "\n" + module;
    return out;
}

std::string failedModulesText(const std::vector<std::string>& modules) {
    std::string out;
    for(const std::string& module: modules)
        out += (out.empty() ? "Not loaded: " : ", ") + module;
    return out;
}

float statusBarHeight() {
    return ImGui::GetTextLineHeight() + 2.0f * ImGui::GetStyle().FramePadding.y;
}

void drawStatusBar(const Status& status) {
    const ImVec2 display = ImGui::GetIO().DisplaySize;
    const float height = statusBarHeight();
    ImGui::SetNextWindowPos({0.0f, display.y - height});
    ImGui::SetNextWindowSize({display.x, height});
    ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImGui::GetStyle().FramePadding);
    ImGui::PushStyleVar(ImGuiStyleVar_WindowMinSize, ImVec2{1.0f, 1.0f});
    ImGui::PushStyleVar(ImGuiStyleVar_WindowBorderSize, 0.0f);
    ImGui::PushStyleColor(ImGuiCol_WindowBg, ImGui::GetStyleColorVec4(ImGuiCol_MenuBarBg));
    const bool isShown = ImGui::Begin("##StatusBar", nullptr, BarFlags);
    /* A panel that was moved over the bar must not hide it, only what pops up for a moment may.
       GetCurrentWindow() would read the library's variable in place and so copy it into here. */
    if(!ImGui::IsPopupOpen("", ImGuiPopupFlags_AnyPopupId | ImGuiPopupFlags_AnyPopupLevel))
        ImGui::BringWindowToDisplayFront(ImGui::GetCurrentContext()->CurrentWindow);
    if(isShown)
        drawContent(status);
    ImGui::End();
    ImGui::PopStyleColor();
    ImGui::PopStyleVar(3);
}

}
