#include "QuillmereEditor/uiProperty.h"

#include <algorithm>
#include <cstring>
#include <string>

#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/pointer.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/changePath.h"
#include "host/ProjectFile.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* The history ends the process when an element is to be inserted into a number or a string, as the
   one who asks for that has to know better. Here it's the project's file that says what is there. */
bool isInsertedIntoPlainValue(const ProjectFile& project, const char* const path) {
    const char* const slash = std::strrchr(path, '/');
    if(!slash || indexKind(slash + 1) == IndexKind::None)
        return false;
    const rapidjson::Pointer parent{path, std::size_t(slash - path)};
    /* The history refuses what isn't a JSON pointer, RapidJSON ends the process over it */
    const rapidjson::Value* const value = parent.IsValid() ? parent.Get(*project.document)
                                                           : nullptr;
    return value && !value->IsArray() && !value->IsObject();
}

Containers::ScopeGuard enterScope(Ui& ui, const char* const label, unsigned int& id) {
    ui.pushScope(label, &id);
    return Containers::ScopeGuard{&ui, [](Ui* const entered) { entered->popScope(); }};
}

bool isLocked(const Ui& ui) { return ui.changeManager && ui.changeManager->isLocked(); }

Containers::ScopeGuard disableIfLocked(const Ui& ui) {
    if(!isLocked(ui))
        return Containers::ScopeGuard{Corrade::NoCreate};
    ImGui::BeginDisabled();
    return Containers::ScopeGuard{ImGui::EndDisabled};
}

/* Dear ImGui takes the mouse away from what becomes disabled under it, but leaves a text field the
   keyboard and a drag that has left its field the mouse. In a window that's collapsed the last item
   is its title, by which it may be on the move. */
void endEdit(Ui& ui) {
    if(!ImGui::IsItemActive() || ImGui::GetCurrentWindow()->SkipItems)
        return;
    ImGui::ClearActiveID();
    /* Or its field would ask for the keyboard again in each frame */
    ui.renamingId = 0;
}

}

const char* scopePath(const Ui& ui) { return ui.scope.isEmpty() ? "" : ui.scope.data(); }

const rapidjson::Value& scopeValue(const Ui& ui) {
    CORRADE_ASSERT(ui.project, "Ui: there is no project", *ui.project->document);
    return *ui.project->getValue(scopePath(ui), false);
}

bool writeScopeValue(Ui& ui, const rapidjson::Value& value, const Merge merge) {
    CORRADE_ASSERT(ui.changeManager, "Ui: there is no change manager", false);
    if(isLocked(ui))
        return false;
    if(isInsertedIntoPlainValue(*ui.project, scopePath(ui))) {
        Utility::Warning{} << "Ui: can't write" << printable(scopePath(ui))
                           << Utility::Debug::nospace
                           << ", its parent is neither an array nor an object";
        return false;
    }
    ui.changeManager->pushChange(scopePath(ui), value, merge == Merge::Yes);
    return true;
}

UiProperty::UiProperty(Ui& ui, const char* const label):
    _ui(ui),
    _label{label},
    _leaveScope{enterScope(ui, label, _id)},
    _value(scopeValue(ui)),
    _enable{disableIfLocked(ui)} {}

UiProperty::~UiProperty() {
    if(isLocked(_ui))
        endEdit(_ui);
    if(ImGui::IsItemHovered(0) && ImGui::GetIO().KeyCtrl)
        ImGui::SetTooltip("%s", path());
}

float UiProperty::number() const {
    if(!_value.IsNumber() && !_value.IsNull())
        warnOfShape(path(), "a number", _value);
    return floatFrom(_value);
}

int UiProperty::integer() const {
    if(!_value.IsNumber() && !_value.IsNull())
        warnOfShape(path(), "a number", _value);
    return integerFrom(_value);
}

const char* UiProperty::string() const {
    if(_value.IsString())
        return _value.GetString();
    if(!_value.IsNull())
        warnOfShape(path(), "a string", _value);
    return "";
}

void UiProperty::read(const Containers::ArrayView<float> out) const { readArray(out, floatFrom); }

void UiProperty::read(const Containers::ArrayView<int> out) const { readArray(out, integerFrom); }

template<class T> void UiProperty::readArray(
    const Containers::ArrayView<T> out, T (*const convert)(const rapidjson::Value&)) const {
    const std::size_t size = _value.IsArray() ? _value.Size() : 0;
    bool isComplete = size >= out.size();
    for(std::size_t i = 0; i != out.size(); ++i) {
        if(i >= size) {
            out[i] = T{};
            continue;
        }
        const rapidjson::Value& element = _value[rapidjson::SizeType(i)];
        isComplete = isComplete && (element.IsNumber() || element.IsNull());
        out[i] = convert(element);
    }
    if(!isComplete && !_value.IsNull())
        warnOfNumbers(path(), out.size(), _value);
}

void UiProperty::drawLabel() const {
    if(!(_ui.flags & Ui::Flag::NoLabel))
        Ui::label(_label);
}

bool UiProperty::write(const rapidjson::Value& value, const Merge merge) const {
    return writeScopeValue(_ui, value, merge);
}

bool UiProperty::write(const char* const string, const Merge merge) const {
    return write(rapidjson::Value{string, _ui.project->allocator()}, merge);
}

}
