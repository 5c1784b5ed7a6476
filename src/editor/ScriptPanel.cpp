#include "editor/ScriptPanel.h"

#include <optional>

#include <imgui.h>

#include "editor/ScriptRunner.h"
#include "editor/StoreLog.h"

namespace QuillmereEngine {

namespace {

const ImVec2 FirstSize{820.0f, 90.0f};

constexpr ImGuiInputTextFlags InputFlags = ImGuiInputTextFlags_EnterReturnsTrue |
    ImGuiInputTextFlags_CallbackHistory | ImGuiInputTextFlags_CallbackResize;

float buttonWidth(const char* const label) {
    const ImGuiStyle& style = ImGui::GetStyle();
    return ImGui::CalcTextSize(label).x + style.FramePadding.x * 2.0f;
}

}

std::string engineText(const ScriptRunner& scripts) {
    switch(scripts.engine()) {
        case ScriptRunner::Engine::None:
            return "The engine starts with the first script";
        case ScriptRunner::Engine::Running:
            return "Running for " + std::to_string(scripts.elapsedSeconds()) + " s";
        case ScriptRunner::Engine::Ended:
            return "The engine has ended, the next script starts it anew";
        case ScriptRunner::Engine::Idle:
            break;
    }
    if(!scripts.restartCount())
        return "Idle";
    return "Idle, engine started anew " +
        (scripts.restartCount() == 1 ? "once" : std::to_string(scripts.restartCount()) + " times");
}

std::string limitsText(const ScriptRunner& scripts) {
    return durationText(scripts.limits().time) + ", " + std::to_string(scripts.limits().megabytes) +
        " MB";
}

void ScriptPanel::draw(ScriptRunner& scripts, StoreLog& log) {
    ImGui::SetNextWindowSize(FirstSize, ImGuiCond_FirstUseEver);
    if(ImGui::Begin("Script", nullptr, ImGuiWindowFlags_NoFocusOnAppearing)) {
        bool isWanted = drawInput();
        ImGui::SameLine();
        ImGui::BeginDisabled(scripts.isRunning());
        isWanted |= ImGui::Button("Run");
        ImGui::EndDisabled();
        ImGui::SameLine();
        ImGui::BeginDisabled(!scripts.isRunning());
        if(ImGui::Button("Stop"))
            scripts.stop();
        ImGui::EndDisabled();
        drawState(scripts);
        if(isWanted)
            run(scripts, log);
    }
    ImGui::End();
}

bool ScriptPanel::drawInput() {
    const ImGuiStyle& style = ImGui::GetStyle();
    ImGui::SetNextItemWidth(-buttonWidth("Run") - buttonWidth("Stop") - style.ItemSpacing.x * 2.0f);
    if(_isFocusWanted)
        ImGui::SetKeyboardFocusHere();
    _isFocusWanted = false;
    return ImGui::InputTextWithHint("##Input", "JavaScript, run by Enter", _text.data(),
        _text.capacity() + 1, InputFlags, edit, this);
}

void ScriptPanel::drawState(ScriptRunner& scripts) {
    ImGui::TextUnformatted(engineText(scripts).c_str());
    const std::string limits = "Limits of a script: " + limitsText(scripts);
    ImGui::SameLine(ImGui::GetWindowContentRegionMax().x - ImGui::CalcTextSize(limits.c_str()).x);
    ImGui::TextDisabled("%s", limits.c_str());
}

/* A script is running as a rule because the line was entered twice, so it stays in the field */
void ScriptPanel::run(ScriptRunner& scripts, StoreLog& log) {
    _isFocusWanted = true;
    if(scripts.isRunning() || _text.find_first_not_of(" \t") == std::string::npos)
        return;
    log.append(LogLevel::Info, {("> " + _text).data(), _text.size() + 2});
    _history.add(_text);
    scripts.run("input " + std::to_string(++_runCount), _text, ScriptRunner::Result::Show);
    _text.clear();
}

int ScriptPanel::edit(ImGuiInputTextCallbackData* const data) {
    auto& panel = *static_cast<ScriptPanel*>(data->UserData);
    if(data->EventFlag == ImGuiInputTextFlags_CallbackResize) {
        panel._text.resize(std::size_t(data->BufTextLen));
        data->Buf = panel._text.data();
    } else {
        panel.showHistory(*data);
    }
    return 0;
}

void ScriptPanel::showHistory(ImGuiInputTextCallbackData& data) {
    const std::string present{data.Buf, std::size_t(data.BufTextLen)};
    const std::optional<std::string> line = data.EventKey == ImGuiKey_UpArrow
        ? _history.earlier(present)
        : _history.later();
    if(!line)
        return;
    data.DeleteChars(0, data.BufTextLen);
    data.InsertChars(0, line->data(), line->data() + line->size());
}

}
