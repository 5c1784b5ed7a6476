#include "plugins/outline/OutlineView.h"

#include <cstring>
#include <string>

#include <Corrade/Containers/ScopeGuard.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/EditorData.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"
#include "host/ValueAccess.h"
#include "plugins/outline/resourceTypes.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr const char* ObjectType = "objects";

/* U+F1FB, the eyedropper that the selectors' buttons show, too */
constexpr const char* PickHint = "\xef\x87\xbb Click an object, Escape to stop";

/* Something without a name is called by its key, so that every row can be read */
const char* nameOf(const char* const key, const ValueAccess& resource) {
    const char* const name = resource["name"].asString();
    return *name ? name : key;
}

/* The size is in bytes with the NUL, which selectors expect */
void dragSource(const char* const type, const char* const key, const char* const name) {
    if(!ImGui::BeginDragDropSource())
        return;
    ImGui::SetDragDropPayload(type, key, std::strlen(key) + 1);
    ImGui::TextUnformatted(name);
    ImGui::EndDragDropSource();
}

/* Over the item drawn last. Not as its label: a name may contain the "##" that ends a label. */
void drawName(const char* const name, const bool isDeleted) {
    ImDrawList& list = *ImGui::GetWindowDrawList();
    const ImVec2 min = ImGui::GetItemRectMin(), max = ImGui::GetItemRectMax();
    const ImVec2 size = ImGui::CalcTextSize(name);
    const ImVec2 corner{min.x + ImGui::GetStyle().FramePadding.x, (min.y + max.y - size.y) * 0.5f};
    const ImU32 color = ImGui::GetColorU32(isDeleted ? ImGuiCol_TextDisabled : ImGuiCol_Text);
    list.AddText(corner, color, name);
    if(isDeleted) {
        const float middle = (min.y + max.y) * 0.5f;
        list.AddLine({corner.x, middle}, {corner.x + size.x, middle}, color);
    }
}

/* All resources of a type, null if there's no object of that name */
const rapidjson::Value* resourcesOf(const rapidjson::Value& root, const char* const type) {
    if(!root.IsObject())
        return nullptr;
    const auto found = root.FindMember(type);
    return found != root.MemberEnd() && found->value.IsObject() ? &found->value : nullptr;
}

/* By index: a search for each key would go over all before it, once per row */
template<class F> void drawRows(const rapidjson::Value& resources, F&& drawRow) {
    ImGuiListClipper clipper;
    clipper.Begin(int(resources.MemberCount()));
    while(clipper.Step())
        for(int i = clipper.DisplayStart; i < clipper.DisplayEnd; ++i) {
            const auto resource = resources.MemberBegin() + i;
            const char* const key = resource->name.GetString();
            ImGui::PushID(key, key + resource->name.GetStringLength());
            drawRow(key, ValueAccess{resource->value});
            ImGui::PopID();
        }
}

/* The style's own colour of a selected row is hardly more than that of a hovered one */
bool drawRow(const bool isSelected) {
    if(isSelected) {
        ImGui::PushStyleColor(ImGuiCol_Header, ImGui::GetStyleColorVec4(ImGuiCol_TabActive));
        ImGui::PushStyleColor(
            ImGuiCol_HeaderHovered, ImGui::GetStyleColorVec4(ImGuiCol_TabHovered));
    }
    const bool out = ImGui::Selectable("##object", isSelected);
    ImGui::PopStyleColor(isSelected ? 2 : 0);
    return out;
}

void drawResources(
    const std::string& type, const rapidjson::Value& resources, const bool canBeDragged) {
    if(!ImGui::CollapsingHeader((type + "###" + type).c_str()))
        return;
    ImGui::PushID(type.c_str());
    const Containers::ScopeGuard popId{ImGui::PopID};
    drawRows(resources, [&](const char* const key, const ValueAccess& resource) {
        ImGui::Selectable("##resource");
        const char* const name = nameOf(key, resource);
        drawName(name, resource["deleted"].asBool());
        if(canBeDragged)
            dragSource(type.c_str(), key, name);
    });
}

}

OutlineView::OutlineView(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    EditorView{manager, plugin} {}

OutlineView::~OutlineView() = default;

const char* OutlineView::title() const { return "Outline"; }

void OutlineView::draw() {
    const bool isShown = ImGui::Begin(title());
    const Containers::ScopeGuard end{ImGui::End};
    if(isShown)
        drawContent();
}

void OutlineView::drawContent() {
    const ProjectFile& project = *_application->project;
    if(!project.document)
        return ImGui::TextDisabled("No project is open.");
    if(ui().pickingId)
        drawPickHint();
    drawObjects(resourcesOf(*project.document, ObjectType));
    for(const std::string& type: resourceTypes(*project.document))
        drawResources(type, *resourcesOf(*project.document, type.c_str()), canBeWritten());
}

void OutlineView::drawPickHint() {
    ImGui::TextUnformatted(PickHint);
    if(ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Escape)) && !ImGui::IsAnyItemActive()) {
        ui().pickingId = 0;
        ui().pickedObject = nullptr;
    }
}

void OutlineView::drawObjects(const rapidjson::Value* const objects) {
    if(!objects || objects->ObjectEmpty())
        return ImGui::TextDisabled("The project has no objects.");
    ImGui::PushID(ObjectType);
    const Containers::ScopeGuard popId{ImGui::PopID};
    drawRows(*objects,
        [this](const char* const key, const ValueAccess& object) { drawObject(key, object); });
}

void OutlineView::drawObject(const char* const key, const ValueAccess& object) {
    const bool isClicked = drawRow(_editorData->selectedObject == key);
    if(isClicked)
        clicked(key);
    const char* const name = nameOf(key, object);
    const bool isDeleted = object["deleted"].asBool();
    drawName(name, isDeleted);
    if(isDeleted && ImGui::IsItemHovered())
        ImGui::SetTooltip("Deleted");
    if(canBeWritten())
        dragSource(ObjectType, key, name);
}

void OutlineView::clicked(const char* const key) {
    if(!ui().pickingId) {
        _editorData->selectedObject = key;
        return;
    }
    if(!canBeWritten())
        return;
    /* The host's copy, as the selector may ask for it after the document or this panel has changed */
    _editorData->pickedObject = key;
    ui().pickedObject = _editorData->pickedObject.c_str();
}

bool OutlineView::canBeWritten() const { return !_application->changeManager->isLocked(); }

}
