#include "QuillmereEditor/Test/UiPanel.h"

#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui_internal.h>

#include "host/RapidJsonUtils.h"
#include "host/jsonText.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace Testing {

using namespace Corrade;

namespace {

/* Sizes of everything that a widget could leave something on */
std::vector<int> stackSizes() {
    const ImGuiContext& context = *ImGui::GetCurrentContext();
    return {context.CurrentWindow->IDStack.Size, context.ColorStack.Size,
        context.StyleVarStack.Size, context.FontStack.Size, context.FocusScopeStack.Size,
        context.ItemFlagsStack.Size, context.GroupStack.Size, context.BeginPopupStack.Size,
        context.CurrentWindowStack.Size, context.DragDropWithinTarget ? 1 : 0,
        context.DisabledStackSize, context.CurrentWindow->DC.ItemWidthStack.Size,
        context.CurrentWindow->DrawList->_ClipRectStack.Size};
}

}

ImVec2 ScreenBox::at(const float x, const float y) const {
    return {min.x + (max.x - min.x) * x, min.y + (max.y - min.y) * y};
}

UiPanel::UiPanel(const std::string& document): input{frame, [this] { draw(); }} {
    ui.project = &project;
    ui.changeManager = &manager;
    setDocument(document);
}

void UiPanel::show(std::function<void()> content) {
    _content = std::move(content);
    warnings.clear();
    caught = 0;
    input.idle(2);
}

void UiPanel::mark(const std::string& name) {
    _boxes[name] = {ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
}

ScreenBox UiPanel::box(const std::string& name) const {
    const auto found = _boxes.find(name);
    if(found != _boxes.end())
        return found->second;
    ADD_FAILURE() << "Nothing drawn as " << name;
    return {};
}

std::string UiPanel::document() const { return RapidJsonUtils::toJson(*project.document); }

std::string UiPanel::lastChange() {
    if(!manager.changeCount())
        return {};
    std::ostringstream out;
    Utility::Debug{&out, Utility::Debug::Flag::NoNewlineAtTheEnd} << manager.lastChange();
    return out.str();
}

void UiPanel::setDocument(const std::string& json) {
    _formerDocuments.push_back(std::move(project.document));
    project.document.emplace();
    JsonTextError error;
    EXPECT_TRUE(parseJson({json.data(), json.size()}, *project.document, error)) << json;
}

void UiPanel::throwAt(const char* const component) {
    manager.addChangeHandler(
        component,
        [](const Change&, Containers::ArrayView<const std::string>, void*) {
            throw std::runtime_error{"handler"};
        },
        nullptr);
}

std::string UiPanel::tooltip() const {
    /* Of several in a frame the last one is seen, and each has its window */
    for(const char* const window: {"##Tooltip_01", "##Tooltip_00"}) {
        std::string out;
        for(const DrawnText& text: drawnTexts(window))
            out += text.text;
        if(!out.empty())
            return out;
    }
    return {};
}

void UiPanel::clickItem(const std::string& text, const char* const window) {
    for(const DrawnText& drawn: drawnTexts(window))
        if(drawn.text == text) {
            input.click({drawn.position.x + 2.0f, drawn.position.y + 4.0f});
            return;
        }
    ADD_FAILURE() << "No item " << text << " in " << window;
}

void UiPanel::draw() {
    ImGui::SetNextWindowPos(position);
    ImGui::SetNextWindowSize(size);
    ImGui::Begin("Panel");
    const std::vector<int> before = stackSizes();
    drawChecked();
    EXPECT_EQ(stackSizes(), before);
    EXPECT_TRUE(ui.scope.isEmpty() || ui.scope.data() == std::string{}) << ui.scope.data();
    EXPECT_TRUE(ui.flagStack.isEmpty());
    ImGui::End();
}

void UiPanel::drawChecked() {
    std::ostringstream out;
    {
        const Utility::Warning redirect{&out, Utility::Warning::Flag::NoNewlineAtTheEnd};
        try {
            if(_content)
                _content();
        } catch(const std::runtime_error&) {
            ++caught;
        }
    }
    warnings += out.str();
}

}}
