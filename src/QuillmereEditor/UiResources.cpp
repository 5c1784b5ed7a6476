#include "QuillmereEditor/Ui.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include <Corrade/Containers/ArrayViewStl.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Utility/Directory.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Tools/System.h"
#include "QuillmereEditor/uiProperty.h"
#include "QuillmereEditor/uiTextBuffer.h"
#include "host/ProjectFile.h"
#include "host/ResourceManager.h"
#include "host/ValueAccess.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr const char* NothingText = "- none -";
constexpr const char* WarningIcon = "\uf071";
constexpr const char* PickIcon = "\uf1fb";
constexpr ImU32 WarningColor = 0xff00ccff;
const ImVec2 PickPadding{5.0f, 5.0f};
constexpr float WaitingAlpha = 0.5f;

/* The type of which one can be picked in the scene */
constexpr const char* PickedType = "objects";

/* What a selector chooses from, and how */
struct Choice {
    const char* typeName;
    bool byName;
    bool (*filter)(ValueAccess& resource);

    bool canBePicked() const { return std::strcmp(typeName, PickedType) == 0; }
};

/* What a value refers to: nothing, a resource, or one that isn't there */
struct Reference {
    const char* id;
    const char* name;
    bool isDangling;
};

Reference findReference(
    const ProjectFile& project, const Choice& choice, const UiProperty& property) {
    const char* const text = property.string();
    if(!property.value().IsString())
        return {nullptr, NothingText, false};
    if(choice.byName) {
        const char* const id = project.resourceByName(choice.typeName, text);
        return {id, id ? text : NothingText, false};
    }
    const ValueAccess resource = project.resource(choice.typeName, text);
    return {text, resource["name"].asString(), !resource.exists()};
}

void drawWarning() {
    ImGui::PushStyleColor(ImGuiCol_Text, WarningColor);
    Ui::alignedText(WarningIcon);
    ImGui::PopStyleColor();
    if(ImGui::IsItemHovered(0))
        ImGui::SetTooltip("Unknown resource!");
    ImGui::SameLine(0.0f, -1.0f);
}

void leaveRoomForButton() {
    ImGui::SetNextItemWidth(ImGui::CalcItemWidth() - ImGui::GetItemRectSize().y -
        ImGui::GetStyle().ItemSpacing.x - 1.0f);
}

/* An open combo, until the end of the scope */
class OpenCombo {
public:
    explicit OpenCombo(): _idCount{ImGui::GetCurrentWindow()->IDStack.Size} {}
    OpenCombo(const OpenCombo&) = delete;
    OpenCombo& operator=(const OpenCombo&) = delete;

    /* The ID of a resource that was chosen by its name stays for the rest of the list. Dear ImGui
       takes one that is left at the end of a window for a mistake and ends the process. */
    ~OpenCombo() {
        ImGui::GetCurrentWindow()->IDStack.resize(_idCount);
        ImGui::EndCombo();
    }

private:
    int _idCount;
};

/* What's listed of all resources of a type */
struct Listing {
    /* Indices into the resources */
    std::vector<std::size_t> indices;
    /* Of the widest name, in pixels */
    float width;
};

Listing listed(const ValueAccess& resources, const Choice& choice) {
    Listing out{{}, 0.0f};
    out.indices.reserve(resources.size());
    for(std::size_t i = 0; i != resources.size(); ++i) {
        ValueAccess resource = resources.at(i);
        if(choice.filter && !choice.filter(resource))
            continue;
        out.indices.push_back(i);
        const char* const name = resource["name"].asString();
        out.width = std::max(out.width, ImGui::CalcTextSize(name, nullptr, true, -1.0f).x);
    }
    return out;
}

bool drawResource(const ValueAccess& resource, const char* const key, const Choice& choice) {
    const std::string label = std::string{resource["name"].asString()} + "##" + key;
    const bool clicked = ImGui::Selectable(label.c_str(), false, 0, ImVec2{0.0f, 0.0f});
    if(clicked && choice.byName)
        ImGui::PushID(key);
    if(ImGui::IsItemHovered(0))
        ImGui::SetTooltip("id: %s", key);
    return clicked;
}

/* Draws what can be seen of the list and gives the index of the clicked resource, -1 if none was */
int drawResources(const ValueAccess& resources, const Choice& choice) {
    const Listing listing = listed(resources, choice);
    /* The popup is as wide as its widest item, seen or not, or scrolling would change its width */
    ImGuiWindow& window = *ImGui::GetCurrentWindow();
    window.DC.CursorMaxPos.x = std::max(
        window.DC.CursorMaxPos.x, window.DC.CursorPos.x + listing.width);

    int clicked = -1;
    ImGuiListClipper clipper;
    clipper.Begin(int(listing.indices.size()));
    while(clipper.Step())
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            const std::size_t index = listing.indices[std::size_t(i)];
            if(drawResource(resources.at(index), resources.key(index), choice))
                clicked = int(index);
        }
    return clicked;
}

bool choose(Ui& ui, const UiProperty& property, const Choice& choice, const char* const preview) {
    if(!ImGui::BeginCombo("##val", preview, 0))
        return false;
    const OpenCombo combo;
    bool changed = ImGui::Selectable(NothingText, false, 0, ImVec2{0.0f, 0.0f});
    if(changed)
        changed = property.write(rapidjson::Value{}, Merge::No);

    /* Written after the list, as a change may move what the list is drawn from */
    const ValueAccess resources = (*ui.project)[choice.typeName];
    const int clicked = drawResources(resources, choice);
    if(clicked != -1) {
        const std::size_t index = std::size_t(clicked);
        const bool isWritten = property.write(
            choice.byName ? resources.at(index)["name"].asString() : resources.key(index),
            Merge::No);
        changed = isWritten || changed;
    }
    return changed;
}

/* Whoever drags may hand over anything under the name of the type */
const char* idIn(const ImGuiPayload* const payload) {
    if(!payload || !payload->Data ||
        !std::memchr(payload->Data, '\0', std::size_t(payload->DataSize)))
        return nullptr;
    return static_cast<const char*>(payload->Data);
}

bool acceptDrop(const UiProperty& property, const Choice& choice) {
    if(!ImGui::BeginDragDropTarget())
        return false;
    const Containers::ScopeGuard endTarget{ImGui::EndDragDropTarget};
    const char* const id = idIn(ImGui::AcceptDragDropPayload(choice.typeName, 0));
    return id && property.write(id, Merge::No);
}

bool takePicked(Ui& ui, const UiProperty& property, const Choice& choice) {
    if(ui.pickingId != property.id() || !ui.pickedObject)
        return false;
    const Containers::ScopeGuard endPicking{&ui, [](Ui* const waiting) {
                                                waiting->pickingId = 0;
                                                waiting->pickedObject = nullptr;
                                            }};
    return property.write(choice.byName
            ? (*ui.project)[choice.typeName].subValue(ui.pickedObject).asString()
            : ui.pickedObject,
        Merge::No);
}

bool pick(Ui& ui, const UiProperty& property, const Choice& choice) {
    ImGui::SameLine(0.0f, -1.0f);
    ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, PickPadding);
    const Containers::ScopeGuard popPadding{1, ImGui::PopStyleVar};
    Containers::ScopeGuard popDisabled{Corrade::NoCreate}, popAlpha{Corrade::NoCreate};
    if(ui.pickingId == property.id()) {
        ImGui::PushItemFlag(ImGuiItemFlags_Disabled, true);
        popDisabled = Containers::ScopeGuard{ImGui::PopItemFlag};
        ImGui::PushStyleVar(ImGuiStyleVar_Alpha, WaitingAlpha);
        popAlpha = Containers::ScopeGuard{1, ImGui::PopStyleVar};
    }
    if(ImGui::Button(PickIcon, ImVec2{0.0f, 0.0f}))
        ui.pickingId = property.id();
    return takePicked(ui, property, choice);
}

bool isNotDeleted(ValueAccess& resource) { return !resource["deleted"].asBool(); }

/* The file that the user chooses, none if the dialog is cancelled */
Containers::Array<std::string> askForFile(const std::string& title, const std::string& path,
    const Containers::ArrayView<const char* const> filters) {
    Containers::Array<std::string> strings;
    for(const char* const filter: filters)
        Containers::arrayAppend(strings, std::string{filter});
    return openFileDialog(title, Utility::Directory::toNativeSeparators(path), strings, false);
}

}

bool Ui::selectResource(const char* const label, const char* const typeName, const bool byName,
    bool (*const filter)(ValueAccess&)) {
    const Choice choice{typeName, byName, filter};
    const UiProperty property{*this, label};
    const Reference reference = findReference(*project, choice, property);
    if(reference.isDangling)
        drawWarning();
    property.drawLabel();
    if(choice.canBePicked())
        leaveRoomForButton();

    /* Whatever is chosen takes the id along, so that isn't shown any more */
    bool changed = choose(*this, property, choice, reference.name);
    if(!changed && reference.id && ImGui::IsItemHovered(0))
        ImGui::SetTooltip("id: %s", reference.id);
    changed = acceptDrop(property, choice) || changed;
    if(choice.canBePicked())
        changed = pick(*this, property, choice) || changed;
    valueContextMenu();
    return changed;
}

bool Ui::selectResource(const char* const label, AbstractResourceManager& manager,
    const bool byName, bool (*const filter)(ValueAccess&)) {
    return selectResource(label, manager.typeName(), byName, filter);
}

bool Ui::selectResourceName(
    const char* const label, AbstractResourceManager& manager, bool (*const filter)(ValueAccess&)) {
    return selectResource(label, manager.typeName(), true, filter);
}

bool Ui::selectResourceName(
    const char* const label, const char* const typeName, bool (*const filter)(ValueAccess&)) {
    return selectResource(label, typeName, true, filter);
}

bool Ui::selectObjectResource(
    const char* const label, ObjectResourceManager& manager, const bool byName) {
    return selectResource(label, manager.typeName(), byName, isNotDeleted);
}

bool Ui::fileSelect(const char* const label, const std::string& title,
    const Containers::ArrayView<const char* const> filters) {
    const UiProperty property{*this, label};
    fillTextBuffer(textBuffer, property.string());
    property.drawLabel();
    leaveRoomForButton();

    /* Dear ImGui may write one byte more than the buffer's size, so there has to be one */
    const std::size_t capacity = textBuffer.size() + 1;
    Containers::arrayReserve<Containers::ArrayMallocAllocator>(textBuffer, capacity);
    const bool typed = ImGui::InputText("##value", textBuffer.data(), capacity,
        ImGuiInputTextFlags_CallbackResize, textResizeCallback, &textBuffer);

    ImGui::SameLine(0.0f, -1.0f);
    if(!ImGui::Button("...", ImVec2{0.0f, 0.0f}))
        return typed;
    const Containers::Array<std::string> chosen = askForFile(title, textBuffer.data(), filters);
    if(chosen.isEmpty())
        return typed;
    return property.write(chosen.front().c_str(), Merge::Yes) || typed;
}

}
