#include "QuillmereEditor/Ui.h"

#include <sstream>
#include <string>

#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/uiProperty.h"
#include "host/RapidJsonUtils.h"
#include "host/jsonText.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Clipboard texts are JSON and nothing else, so the byte order mark that a file may have is none */
bool parseStrictly(const Containers::StringView text, rapidjson::Document& out) {
    JsonTextError error;
    return !text.hasPrefix("\xef\xbb\xbf") && parseJson(text, out, error);
}

bool fits(const rapidjson::Value& pasted, const rapidjson::Value& target) {
    if(pasted.GetType() != target.GetType()) {
        Utility::Warning{} << "Pasted value did not match type of the target property.";
        return false;
    }
    if(target.IsArray() && target.Size() != pasted.Size()) {
        Utility::Warning{} << "Pasted value array size did not match, expected" << target.Size()
                           << "but got" << pasted.Size();
        return false;
    }
    return true;
}

bool isKeyPressed(const ImGuiKey key) { return ImGui::IsKeyPressed(ImGui::GetKeyIndex(key), true); }

void drawMenu(Ui& ui) {
    if(!ImGui::BeginPopupContextItem(scopePath(ui), ImGuiPopupFlags_MouseButtonRight))
        return;
    const Containers::ScopeGuard endPopup{ImGui::EndPopup};
    if(ImGui::MenuItem("\uf0c5 Copy", "Cmd + C", false, true))
        ui.copyValue();
    if(ImGui::MenuItem("\uf0ea Paste", "Cmd + V", false, true))
        ui.pasteValue();
}

}

bool Ui::shortcutKeyPressed() { return ImGui::GetIO().KeySuper; }

void Ui::valueContextMenu() {
    drawMenu(*this);
    if(ImGui::IsItemActive() || !ImGui::IsItemHovered(ImGuiHoveredFlags_AllowWhenDisabled) ||
        !shortcutKeyPressed())
        return;
    if(isKeyPressed(ImGuiKey_C)) {
        copyValue();
        ImGui::SetTooltip("Copied!");
    }
    if(isKeyPressed(ImGuiKey_V))
        pasteValue();
}

void Ui::copyValue() {
    std::ostringstream stream;
    {
        const Utility::Debug redirect{&stream};
        Utility::Debug{Utility::Debug::Flag::NoNewlineAtTheEnd} << scopeValue(*this);
    }
    ImGui::SetClipboardText(stream.str().c_str());
}

void Ui::pasteValue() {
    const char* const text = ImGui::GetClipboardText();
    rapidjson::Document pasted;
    if(!parseStrictly(text ? text : "", pasted))
        Utility::Warning{} << "Cannot parse pasted value.";
    else if(fits(pasted, scopeValue(*this)))
        writeScopeValue(*this, pasted, Merge::No);
}

}
