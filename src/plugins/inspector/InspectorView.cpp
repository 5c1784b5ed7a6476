#include "plugins/inspector/InspectorView.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include <Corrade/Containers/ScopeGuard.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/EditorData.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"
#include "host/RapidJsonUtils.h"
#include "plugins/inspector/objectMember.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

constexpr std::string_view KnownMembers[]{"active", "animation", "color", "layers", "lightType",
    "material", "mesh", "name", "notes", "rotation", "scale", "shadows", "tags", "target",
    "texture", "translation", "type"};

constexpr const char* LightTypes[]{"directional", "point", "spot"};
constexpr const char* TextureFilters[]{
    "Images", "*.png *.jpg *.jpeg *.tga *.ktx2", "All files", "*"};

constexpr int LayerCount = 8;

/* Between buttons that belong together, in pixels */
constexpr float ButtonGap = 1.0f;

/* Of what a panel's base class keeps over a reload: three pointers */
constexpr std::size_t HostStateSize = 3 * sizeof(void*);

/* More rows than a panel shows, but not as many as a file may hold */
constexpr std::size_t MostMembers = 256;

bool isKnown(const std::string& key) {
    return std::find(std::begin(KnownMembers), std::end(KnownMembers), key) !=
        std::end(KnownMembers);
}

/* Leaves the scope also when a handler of a change throws */
class Scope {
public:
    explicit Scope(Ui& ui, const std::string& name): _ui(ui) { _ui.pushScope(name.c_str()); }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { _ui.popScope(); }

private:
    Ui& _ui;
};

/* The values drawn while it lives have no label of their own */
class WithoutLabels {
public:
    explicit WithoutLabels(Ui& ui): _ui(ui) { _ui.pushFlags(Ui::Flag::NoLabel); }
    WithoutLabels(const WithoutLabels&) = delete;
    WithoutLabels& operator=(const WithoutLabels&) = delete;
    ~WithoutLabels() { _ui.popFlags(); }

private:
    Ui& _ui;
};

float buttonWidth(const char* const label) {
    return ImGui::CalcTextSize(label).x + 2.0f * ImGui::GetStyle().FramePadding.x;
}

bool beginSection(const char* const name) {
    return ImGui::CollapsingHeader(name, ImGuiTreeNodeFlags_DefaultOpen);
}

}

struct InspectorView::State {
    char newTag[TagCapacity];
    int selectedTag;
};

InspectorView::InspectorView(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    EditorView{manager, plugin} {}

InspectorView::~InspectorView() = default;

const char* InspectorView::title() const { return "Inspector"; }

void InspectorView::load(const Containers::ArrayView<char> state) {
    EditorView::load(state);
    /* Another build of the panel may have kept something else */
    if(state.size() != HostStateSize + sizeof(State))
        return;
    State own;
    std::memcpy(&own, state.data() + HostStateSize, sizeof(own));
    std::memcpy(_newTag, own.newTag, sizeof(_newTag));
    _selectedTag = own.selectedTag;
    _shownObject = _editorData->selectedObject;
}

Containers::Array<char> InspectorView::unload(const bool shutdown) {
    const Containers::Array<char> host = EditorView::unload(shutdown);
    if(shutdown)
        return {};
    State own{};
    std::memcpy(own.newTag, _newTag, sizeof(_newTag));
    own.selectedTag = _selectedTag;
    Containers::Array<char> out{NoInit, host.size() + sizeof(own)};
    std::memcpy(out.data(), host.data(), host.size());
    std::memcpy(out.data() + host.size(), &own, sizeof(own));
    return out;
}

void InspectorView::draw() {
    _isPickDrawn = false;
    {
        const bool isShown = ImGui::Begin(title());
        const Containers::ScopeGuard end{ImGui::End};
        if(isShown)
            drawContent();
    }
    dropLostPick();
}

/* A selector that waits and is gone, as another object was selected or the panel was folded, would
   take the next click into the outline for a pick that nobody gets */
void InspectorView::dropLostPick() {
    if(_pickingId && !_isPickDrawn && ui().pickingId == _pickingId) {
        ui().pickingId = 0;
        ui().pickedObject = nullptr;
    }
    if(!_isPickDrawn)
        _pickingId = 0;
}

void InspectorView::drawContent() {
    const std::string& key = _editorData->selectedObject;
    if(std::exchange(_shownObject, key) != key)
        _selectedTag = -1;
    const Scope objects{ui(), "objects"};
    const Scope object{ui(), escapedKey(key)};
    const rapidjson::Value* const value = key.empty() || !_application->project->document
        ? nullptr
        : _application->project->getValue(ui().scope.data(), true);
    if(value && value->IsObject())
        drawObject();
    else
        ImGui::TextDisabled("No object is selected.");
}

const rapidjson::Value* InspectorView::member(const char* const key) {
    const Scope scope{ui(), key};
    return _application->project->getValue(ui().scope.data(), true);
}

bool InspectorView::has(const char* const key) { return member(key); }

void InspectorView::drawObject() {
    drawIdentity(_shownObject);
    if(beginSection("Transform"))
        drawTransform();
    if(beginSection("Appearance"))
        drawAppearance();
    if(has("lightType") && beginSection("Light"))
        drawLight();
    if(beginSection("Relations and notes"))
        drawRelations();
    drawUnknownMembers();
}

void InspectorView::drawIdentity(const std::string& key) {
    Ui::label("name");
    drawName();
    Ui::label("id");
    ImGui::TextUnformatted(key.c_str());
    if(has("type")) {
        Ui::label("type");
        ui().text("type");
    }
    ui().checkbox("active");
}

/* A name that is empty is no place for a double click */
void InspectorView::drawName() {
    const rapidjson::Value* const name = member("name");
    const bool isEmpty = !name || !name->IsString() || !*name->GetString();
    const ImGuiID id = renamingId();
    if(!isEmpty || ui().renamingId == id)
        return ui().renameable("name");
    ImGui::TextDisabled("unnamed");
    if(ImGui::IsItemHovered() && ImGui::IsMouseDoubleClicked(ImGuiMouseButton_Left))
        ui().renamingId = id;
}

/* By which the widget knows that it's the one to be edited, see Ui::renamingId */
unsigned int InspectorView::renamingId() {
    const Scope scope{ui(), "name"};
    return ImGui::GetID("name");
}

void InspectorView::drawTransform() {
    ui().inputFloat3("translation");
    ui().inputFloat3("rotation");
    ui().inputFloat3("scale");
}

void InspectorView::drawAppearance() {
    ui().selectResource("mesh", "meshes", false);
    ui().selectResource("material", "materials", false);
    drawColor();
    if(has("texture"))
        drawTexture();
    ui().checkboxBits("layers", LayerCount, nullptr);
    if(has("shadows")) {
        ui().checkboxBit("shadows", 0, "casts");
        ImGui::SameLine();
        const WithoutLabels withoutLabels{ui()};
        ui().checkboxBit("shadows", 1, "receives");
    }
}

/* The field leaves room for a button that is as wide as it's high, and this one is wider */
/* The field leaves room for a button that is as wide as it's high, and this one is wider */
void InspectorView::drawTexture() {
    const float missing = std::max(buttonWidth("...") - ImGui::GetFrameHeight(), 0.0f);
    ImGui::PushItemWidth(ImGui::CalcItemWidth() - missing);
    const Containers::ScopeGuard popWidth{ImGui::PopItemWidth};
    ui().fileSelect("texture", "Choose a texture", TextureFilters);
}

void InspectorView::drawColor() {
    const rapidjson::Value* const color = member("color");
    if(!color)
        return;
    const std::size_t size = color->IsArray() ? color->Size() : 0;
    if(size == 3)
        ui().colorEdit3("color");
    else if(size == 4)
        ui().colorEdit4("color");
    else
        drawMember({"color", shapeOf(*color), size});
}

void InspectorView::drawLight() { ui().inputEnum("lightType", Containers::arrayView(LightTypes)); }

void InspectorView::drawRelations() {
    drawTarget();
    if(has("animation"))
        ui().selectResourceName("animation", "animations");
    drawTags();
    ui().inputTextMultiline("notes");
}

void InspectorView::drawTarget() {
    const ImGuiID id = ImGui::GetID("target");
    /* Before, as the selector that gets its object in this frame doesn't wait any more after it */
    const bool isWaiting = ui().pickingId == id;
    ui().selectObjectResource("target", _objects, false);
    if(isWaiting || ui().pickingId == id) {
        _pickingId = id;
        _isPickDrawn = true;
    }
}

void InspectorView::drawTags() {
    drawTagEditing();
    ui().stringList("tags", _selectedTag);
}

void InspectorView::drawTagEditing() {
    /* As everything else that would write */
    ImGui::BeginDisabled(_application->changeManager->isLocked());
    const Containers::ScopeGuard endDisabled{ImGui::EndDisabled};
    Ui::label("tags");
    ImGui::SetNextItemWidth(ImGui::CalcItemWidth() - ImGui::GetStyle().ItemSpacing.x -
        buttonWidth("+") - ButtonGap - buttonWidth("-"));
    ImGui::InputTextWithHint("##newTag", "new tag", _newTag, sizeof(_newTag));
    ImGui::SameLine();
    if(ui().buttonGrouped("+", "addTag", Ui::ButtonFlag::RoundLeft))
        addTag();
    ImGui::SameLine(0.0f, ButtonGap);
    if(ui().buttonGrouped("-", "removeTag", Ui::ButtonFlag::RoundRight))
        removeTag();
}

void InspectorView::addTag() {
    if(!*_newTag)
        return;
    const Scope tags{ui(), "tags"};
    _application->changeManager->pushAppend(ui().scope.data(), _newTag);
    *_newTag = '\0';
}

/* As a new array: a removal would also remove an array that it leaves empty, and undoing that would
   bring it back as the last member of the object */
void InspectorView::removeTag() {
    const rapidjson::Value* const tags = member("tags");
    if(!tags || !tags->IsArray() || _selectedTag < 0 || std::size_t(_selectedTag) >= tags->Size())
        return;
    rapidjson::MemoryPoolAllocator<> pool;
    rapidjson::Value rest = RapidJsonUtils::copy(*tags, pool);
    rest.Erase(rest.Begin() + std::exchange(_selectedTag, -1));
    const Scope scope{ui(), "tags"};
    _application->changeManager->pushChange(ui().scope.data(), rest, false);
}

void InspectorView::drawUnknownMembers() {
    const rapidjson::Value* const object = _application->project->getValue(ui().scope.data(), true);
    /* A widget above may have changed it to something else */
    if(!object || !object->IsObject())
        return;
    std::vector<ObjectMember> members = membersOf(*object, object->MemberCount());
    members.erase(std::remove_if(members.begin(), members.end(),
                      [](const ObjectMember& known) { return isKnown(known.key); }),
        members.end());
    if(members.empty() || !beginSection("Other"))
        return;
    const std::size_t count = std::min(members.size(), MostMembers);
    for(std::size_t i = 0; i != count; ++i)
        drawMember(members[i]);
    if(count != members.size())
        ImGui::TextDisabled("... and %zu more", members.size() - count);
}

void InspectorView::drawMember(const ObjectMember& member) {
    if(member.shape == ValueShape::Array || member.shape == ValueShape::Object ||
        member.shape == ValueShape::Texts)
        return drawNode(member);

    Ui::label(member.key.c_str());
    if(member.shape == ValueShape::Null)
        return ImGui::TextDisabled("null");
    const WithoutLabels withoutLabels{ui()};
    drawValue(escapedKey(member.key).c_str(), member);
}

void InspectorView::drawValue(const char* const label, const ObjectMember& member) {
    using Edit = bool (Ui::*)(const char*);
    constexpr Edit EditIntegers[]{&Ui::inputInt2, &Ui::inputInt3, &Ui::inputInt4};
    constexpr Edit EditNumbers[]{&Ui::inputFloat2, &Ui::inputFloat3, &Ui::inputFloat4};
    switch(member.shape) {
        case ValueShape::Boolean:
            ui().checkboxUnlabled(label);
            break;
        case ValueShape::Integer:
            ui().inputInt(label, 1, 0);
            break;
        case ValueShape::Number:
            ui().inputFloat(label);
            break;
        case ValueShape::Text:
            ui().inputText(label);
            break;
        case ValueShape::Integers:
            (ui().*EditIntegers[member.size - 2])(label);
            break;
        case ValueShape::Numbers:
            (ui().*EditNumbers[member.size - 2])(label);
            break;
        case ValueShape::Null:
        case ValueShape::Texts:
        case ValueShape::Array:
        case ValueShape::Object:
            break;
    }
}

void InspectorView::drawNode(const ObjectMember& member) {
    const Scope scope{ui(), escapedKey(member.key)};
    const char* const unit = member.shape == ValueShape::Object ? "member" : "element";
    if(!ImGui::TreeNodeEx("##members", ImGuiTreeNodeFlags_SpanAvailWidth, "%s (%zu %s%s)",
           member.key.c_str(), member.size, unit, member.size == 1 ? "" : "s"))
        return;
    const Containers::ScopeGuard pop{ImGui::TreePop};
    const rapidjson::Value* const value = _application->project->getValue(ui().scope.data(), true);
    if(value)
        drawMembers(*value);
}

void InspectorView::drawMembers(const rapidjson::Value& value) {
    const std::size_t size = value.IsObject() ? value.MemberCount()
        : value.IsArray()                     ? value.Size()
                                              : 0;
    for(const ObjectMember& member: membersOf(value, MostMembers))
        drawMember(member);
    if(size > MostMembers)
        ImGui::TextDisabled("... and %zu more", size - MostMembers);
}

}
