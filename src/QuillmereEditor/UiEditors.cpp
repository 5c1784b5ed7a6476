#include "QuillmereEditor/Ui.h"

#include <cstdint>
#include <string>
#include <unordered_set>

#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/FormatStl.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/uiProperty.h"
#include "QuillmereEditor/uiTextBuffer.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr int BitCount = 32;
/* As many as there are names if there are any */
constexpr int NamedBitCount = 8;
constexpr int BitsPerRow = 4;
/* Where the bits begin, of the window's width */
constexpr float BitsStart = 0.33f;

constexpr int VisibleEnumNames = 7;
constexpr float StringListHeight = 100.0f;

bool isBitSet(const int mask, const int bit) { return (std::uint32_t(mask) >> bit) & 1; }

int toggled(const int mask, const int bit) {
    return int(std::uint32_t(mask) ^ (std::uint32_t{1} << bit));
}

/* An empty label has the ID of what it's in, and Dear ImGui ends the process where that is a window.
   Keys and strings of a project may be empty, so they get another one that shows nothing. */
const char* labelFrom(const char* const text) { return *text ? text : "##"; }

bool editBoolean(Ui& ui, const char* const label, const char* const shownLabel) {
    const UiProperty property{ui, label};
    bool checked = property.value().IsTrue();
    return Ui::checkbox(shownLabel, &checked) &&
        property.write(rapidjson::Value{checked}, Merge::No);
}

std::string bitLabel(const int bit, const Containers::ArrayView<const char*> names) {
    if(std::size_t(bit) < names.size())
        return names[bit];
    return Utility::formatString("{}", bit);
}

/* Draws all bits and gives the mask with those toggled that were clicked */
int editBits(int mask, const int count, const Containers::ArrayView<const char*> names) {
    const float width = ImGui::GetWindowContentRegionWidth();
    const float start = width * BitsStart;
    const float column = (width - start) / float(BitsPerRow);
    for(int i = 0; i < count; ++i) {
        bool checked = isBitSet(mask, i);
        if(Ui::checkbox(bitLabel(i, names).c_str(), &checked))
            mask = toggled(mask, i);
        const int next = (i + 1) % BitsPerRow;
        if(next == 0)
            ImGui::Dummy(ImVec2{1.0f, 1.0f});
        ImGui::SameLine(start + float(next) * column, -1.0f);
    }
    return mask;
}

template<class Draw> bool editText(Ui& ui, const char* const label, Draw&& draw) {
    const UiProperty property{ui, label};
    fillTextBuffer(ui.textBuffer, property.string());
    property.drawLabel();
    return property.finish(
        draw(ui.textBuffer), [&] { return ui.textBuffer.data(); }, Merge::Yes);
}

void drawName(Ui& ui, const UiProperty& property, const ImGuiID id) {
    const char* const name = property.string();
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const ImVec2 size = ImGui::CalcTextSize(name, nullptr, true, -1.0f);
    const bool hovered = ImGui::ItemHoverable(
        ImRect{position.x, position.y, position.x + size.x, position.y + size.y}, id);
    ImGui::TextUnformatted(name, nullptr);
    if(hovered && ImGui::IsMouseDoubleClicked(0))
        ui.renamingId = id;
}

/* A widget that is drawn earlier and clicked takes the keyboard before the field can hand over its
   text. Dear ImGui still has that. Null if it's not so. */
const char* stolenText(const ImGuiID fieldId) {
    const ImGuiContext& context = *ImGui::GetCurrentContext();
    const ImGuiInputTextState* const state = ImGui::GetInputTextState(fieldId);
    const bool isStolen = context.ActiveIdPreviousFrame == fieldId && context.ActiveId != fieldId &&
        context.ActiveId != 0;
    return state && isStolen ? state->TextA.Data : nullptr;
}

bool isClickedElsewhere(const ImGuiMouseButton button) {
    return !ImGui::IsItemHovered(0) && ImGui::IsMouseClicked(button, false);
}

void endRenaming(Ui& ui) {
    ui.renamingId = 0;
    ImGui::ClearActiveID();
}

void editName(Ui& ui, const UiProperty& property) {
    ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, ImVec2{0.0f, 0.0f});
    ImGui::PushStyleVar(ImGuiStyleVar_FrameBorderSize, 0.0f);
    const Containers::ScopeGuard popStyle{2, ImGui::PopStyleVar};

    const char* const stolen = stolenText(ImGui::GetID("##renameable"));
    fillTextBuffer(ui.textBuffer, stolen ? stolen : property.string());
    const bool entered = ImGui::InputText("##renameable", ui.textBuffer.data(),
        ui.textBuffer.size(),
        ImGuiInputTextFlags_CallbackResize | ImGuiInputTextFlags_EnterReturnsTrue |
            ImGuiInputTextFlags_AutoSelectAll,
        Ui::textResizeCallback, &ui.textBuffer);

    if(entered || isClickedElsewhere(ImGuiMouseButton_Left)) {
        property.write(ui.textBuffer.data(), Merge::Yes);
        endRenaming(ui);
    } else if(ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Escape), true) ||
        isClickedElsewhere(ImGuiMouseButton_Right)) {
        endRenaming(ui);
    } else {
        ImGui::SetKeyboardFocusHere(-1);
    }
}

const char* elementString(const rapidjson::Value& element) {
    return element.IsString() ? element.GetString() : "";
}

/* Equal strings have one ID, and of items with one ID only the first can be clicked. Those behind it
   have their index in theirs, too. */
int drawStrings(const rapidjson::Value& list, const int selected) {
    std::unordered_set<ImGuiID> ids;
    int clicked = -1;
    const int count = list.IsArray() ? int(list.Size()) : 0;
    for(int i = 0; i != count; ++i) {
        const char* const label = labelFrom(elementString(list[rapidjson::SizeType(i)]));
        const bool isFirst = ids.insert(ImGui::GetID(label)).second;
        if(!isFirst)
            ImGui::PushID(i);
        if(ImGui::Selectable(label, i == selected, 0, ImVec2{0.0f, 0.0f}))
            clicked = i;
        if(!isFirst)
            ImGui::PopID();
    }
    return clicked;
}

bool isListOfStrings(const rapidjson::Value& value) {
    if(!value.IsArray())
        return false;
    for(const rapidjson::Value& element: value.GetArray())
        if(!element.IsString() && !element.IsNull())
            return false;
    return true;
}

}

bool Ui::checkbox(const char* const label) { return editBoolean(*this, label, labelFrom(label)); }

bool Ui::checkboxUnlabled(const char* const label) {
    return editBoolean(*this, label, Utility::formatString("##{}", label).c_str());
}

bool Ui::checkboxBit(const char* const label, const int bit, const char* const name) {
    CORRADE_ASSERT(bit >= 0 && bit < BitCount,
        "Ui::checkboxBit(): expected a bit below" << BitCount << "but got" << bit, false);
    const UiProperty property{*this, label};
    const int mask = property.integer();
    property.drawLabel();

    ImGui::PushID(bit);
    const Containers::ScopeGuard popId{ImGui::PopID};
    bool checked = isBitSet(mask, bit);
    return checkbox(name ? name : bitLabel(bit, {}).c_str(), &checked) &&
        property.write(jsonNumber(toggled(mask, bit)), Merge::No);
}

bool Ui::checkboxBits(
    const char* const label, const int count, const Containers::ArrayView<const char*> names) {
    CORRADE_ASSERT(count <= BitCount,
        "Ui::checkboxBits(): expected at most" << BitCount << "bits but got" << count, false);
    ImGui::BeginGroup();
    CORRADE_ASSERT(names.isEmpty() || names.size() == NamedBitCount,
        "Ui::checkboxBits(): expected names to have" << count << "elements", false);
    const UiProperty property{*this, label};
    const Containers::ScopeGuard endGroup{ImGui::EndGroup};
    const int before = property.integer();
    property.drawLabel();

    const int mask = editBits(before, count, names);
    return mask != before && property.write(jsonNumber(mask), Merge::No);
}

bool Ui::inputEnum(const char* const label, const Containers::ArrayView<const char* const> names) {
    const UiProperty property{*this, label};
    int index = RapidJsonUtils::enumStringToValue(property.string(), names);
    property.drawLabel();
    return property.finish(
        ImGui::Combo("##val", &index, names.data(), int(names.size()), VisibleEnumNames),
        [&] { return names[index]; }, Merge::No);
}

bool Ui::inputEnum(const char* const label, const std::initializer_list<const char*> names) {
    return inputEnum(label, Containers::arrayView(names));
}

bool Ui::inputText(const char* const label) {
    return editText(*this, label, [](Containers::Array<char>& buffer) {
        return ImGui::InputText("##val", buffer.data(), buffer.size(),
            ImGuiInputTextFlags_CallbackResize, textResizeCallback, &buffer);
    });
}

bool Ui::inputTextMultiline(const char* const label) {
    return editText(*this, label, [](Containers::Array<char>& buffer) {
        return ImGui::InputTextMultiline("##val", buffer.data(), buffer.size(), ImVec2{0.0f, 0.0f},
            ImGuiInputTextFlags_CallbackResize, textResizeCallback, &buffer);
    });
}

void Ui::renameable(const char* const label) {
    const UiProperty property{*this, label};
    const ImGuiID id = ImGui::GetID(label);
    if(renamingId == id)
        editName(*this, property);
    else
        drawName(*this, property, id);
}

bool Ui::stringList(const char* const label, int& selected) {
    const UiProperty property{*this, label};
    const rapidjson::Value& list = property.value();
    if(!list.IsNull() && !isListOfStrings(list))
        warnOfShape(property.path(), "an array of strings", list);

    ImGui::BeginChild(
        labelFrom(label), ImVec2{ImGui::GetWindowContentRegionWidth(), StringListHeight}, false, 0);
    const Containers::ScopeGuard endChild{ImGui::EndChild};
    ImGui::PushID(label);
    const Containers::ScopeGuard popId{ImGui::PopID};
    const int clicked = drawStrings(list, selected);
    if(clicked != -1)
        selected = clicked;
    return clicked != -1;
}

}
