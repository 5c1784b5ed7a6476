#include "editor/LayoutKeeper.h"

#include <filesystem>
#include <optional>
#include <utility>

#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Tools/Log.h"
#include "editor/files.h"

namespace QuillmereEngine {

namespace {

bool isArranged(const ImGuiWindow& window) {
    return !(window.Flags &
        (ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_ChildWindow | ImGuiWindowFlags_Popup |
            ImGuiWindowFlags_Tooltip));
}

void fitWindow(ImGuiWindow& window, const WorkArea from, const WorkArea to) {
    const PanelRectangle present{
        int(window.Pos.x), int(window.Pos.y), int(window.SizeFull.x), int(window.SizeFull.y)};
    const PanelRectangle next = fitted(present, from, to);
    ImGui::SetWindowPos(&window, {float(next.x), float(next.y)});
    ImGui::SetWindowSize(&window, {float(next.width), float(next.height)});
}

}

LayoutKeeper::LayoutKeeper(std::string userFile): _userFile{std::move(userFile)} {}

void LayoutKeeper::arrange(const WorkArea area) {
    /* A minimized window has no area, and nothing could be scaled back from none */
    if(area == _area || area.width <= 0 || area.height <= 0)
        return;
    const WorkArea earlier = std::exchange(_area, area);
    if(!std::exchange(_isLoaded, true))
        return load();
    for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
        if(isArranged(*window))
            fitWindow(*window, earlier, area);
}

void LayoutKeeper::load() {
    std::string problem;
    std::optional<std::string> layout;
    std::error_code ignored;
    if(std::filesystem::status(_userFile, ignored).type() !=
        std::filesystem::file_type::not_found) {
        layout = readWholeFile(_userFile, problem);
        if(!layout) {
            log(LogLevel::Warn, ("Can't read the layout " + _userFile + ": " + problem).c_str());
            /* Whatever is in it, it's the user's and not to be written over */
            _userFile.clear();
        }
    }
    const std::string sharedPath = sharedFile("layout.ini");
    if(!layout)
        layout = readWholeFile(sharedPath, problem);
    if(!layout)
        return log(LogLevel::Warn,
            ("Can't read the shipped layout " + (sharedPath.empty() ? "layout.ini" : sharedPath) +
                ": " + problem)
                .c_str());
    const std::string fit = fittedLayout(*layout, _area);
    ImGui::LoadIniSettingsFromMemory(fit.data(), fit.size());
}

void LayoutKeeper::saveIfDue() {
    if(std::exchange(ImGui::GetIO().WantSaveIniSettings, false))
        save();
}

void LayoutKeeper::saveIfChanged() {
    if(ImGui::GetCurrentContext()->SettingsDirtyTimer > 0.0f)
        save();
}

void LayoutKeeper::save() {
    if(_userFile.empty() || !_isLoaded)
        return;
    std::size_t size = 0;
    const char* const settings = ImGui::SaveIniSettingsToMemory(&size);
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path{_userFile}.parent_path(), ignored);
    if(const std::string problem = writeWholeFile(
           _userFile, layoutWithArea({settings, size}, _area));
        !problem.empty()) {
        log(LogLevel::Warn, ("Can't keep the layout in " + _userFile + ": " + problem).c_str());
        _userFile.clear();
    }
}

}
