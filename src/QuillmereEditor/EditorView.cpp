#include "QuillmereEditor/EditorView.h"

#include <cstring>
#include <utility>

#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>

#include "QuillmereEditor/Tools/Log.h"
#include "host/QuillmereEditorApplication.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* What one instance hands to the next when its module is reloaded. Never leaves the process. */
struct ViewState {
    ImGuiContext* context;
    EditorData* editorData;
    QuillmereEditorApplication* application;
};

}

EditorView::EditorView(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    AbstractModule{manager, plugin} {}

void EditorView::load(const Containers::ArrayView<char> state) {
    if(!state.data())
        return;

    ViewState hostPointers;
    std::memcpy(&hostPointers, state.data(), sizeof(hostPointers));
    init(hostPointers.context, hostPointers.editorData, hostPointers.application);
}

Containers::Array<char> EditorView::unload(const bool shutdown) {
    if(shutdown)
        return {};

    const ViewState hostPointers{ImGui::GetCurrentContext(), _editorData, _application};
    Containers::Array<char> state{NoInit, sizeof(hostPointers)};
    std::memcpy(state.data(), &hostPointers, sizeof(hostPointers));
    deinit();
    return state;
}

int EditorView::moduleType() { return int(ModuleType::EditorView); }

void EditorView::init(ImGuiContext* const context, EditorData* const data,
    QuillmereEditorApplication* const application) {
    Utility::Debug{} << "Initializing View:" << plugin();

    CORRADE_ASSERT(context, "EditorView::init(): ImGuiContext was nullptr", );
    CORRADE_ASSERT(data, "EditorView::init(): EditorData was nullptr", );
    CORRADE_ASSERT(application, "EditorView::init(): QuillmereEditor was nullptr", );

    ImGui::SetCurrentContext(context);
    _editorData = data;
    _application = application;
    setLogCallback(appendConsoleLine, application);
}

void EditorView::deinit() { setLogCallback(nullptr, nullptr); }

void EditorView::update() {}
void EditorView::mouseMoveEvent(MouseMoveEvent&) {}
void EditorView::mousePressEvent(MouseEvent&) {}
void EditorView::mouseReleaseEvent(MouseEvent&) {}
void EditorView::mouseScrollEvent(MouseScrollEvent&) {}
void EditorView::keyPressEvent(KeyEvent&) {}
void EditorView::keyReleaseEvent(KeyEvent&) {}
void EditorView::exitEvent(ExitEvent&) {}

Editor& EditorView::editor() {
    CORRADE_ASSERT(
        _application, "EditorView::editor(): the view isn't initialized", *_application->editor);
    return *_application->editor;
}

Ui& EditorView::ui() {
    CORRADE_ASSERT(_application, "EditorView::ui(): the view isn't initialized", *_application->ui);
    return *_application->ui;
}

void EditorView::addChangeHandler(
    const Containers::StringView key, ViewChangeHandlers::Function function) {
    CORRADE_ASSERT(_application, "EditorView::addChangeHandler(): the view isn't initialized", );
    _application->addChangeHandler(*this, key, std::move(function));
}

}
