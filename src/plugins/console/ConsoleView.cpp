#include "plugins/console/ConsoleView.h"

#include <algorithm>
#include <limits>
#include <mutex>

#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Ui.h"
#include "common/StringArrayView.h"
#include "host/Editor.h"
#include "host/QuillmereEditorApplication.h"
#include "plugins/console/ConsoleTextEx.h"
#include "plugins/console/shownText.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

enum Tab { ConsoleTab, ServerTab, JavaScriptTab };

constexpr const char* TabLabels[]{"Console", "Server", "Java Script"};

/* U+F1F8, a trash can in the editor's icon font */
constexpr const char TrashIcon[]{"\xef\x87\xb8"};

/* The toolbar's boxes are less high than the tabs they stand beside */
constexpr float ToolbarOffset = 4.0f;

/* The tab items hold no content: what's beneath them is the same for all, only the store differs */
int drawTabs() {
    int selected = ConsoleTab;
    if(!ImGui::BeginTabBar("logview", 0))
        return selected;
    for(const int tab: {ConsoleTab, ServerTab, JavaScriptTab})
        if(ImGui::BeginTabItem(TabLabels[tab], nullptr, 0)) {
            ImGui::EndTabItem();
            selected = tab;
        }
    ImGui::EndTabBar();
    return selected;
}

void moveLayoutCursorY(const float distance) {
    ImGui::GetCurrentWindow()->DC.CursorPos.y += distance;
}

/* The widget counts in int */
int textSize(const Containers::ArrayView<const char> text) {
    return int(std::min(text.size(), std::size_t(std::numeric_limits<int>::max())));
}

}

ConsoleView::ConsoleView(
    PluginManager::AbstractManager& manager, const Containers::StringView plugin):
    EditorView{manager, plugin} {}

ConsoleView::~ConsoleView() = default;

const char* ConsoleView::title() const { return "Console"; }

/* Resolves all three, so that a host that lacks one of them learns of it before its tab is opened */
StringArrayView& ConsoleView::store(const int tab) {
    StringArrayView& consoleLines = _application->consoleLines;
    StringArrayView& serverLines = editor().serverSource->serverLines();
    StringArrayView& javaScriptLines = *editor().javaScriptLines;
    if(tab == ServerTab)
        return serverLines;
    return tab == JavaScriptTab ? javaScriptLines : consoleLines;
}

void ConsoleView::drawClearButton(StringArrayView& shownStore) {
    ImGui::SameLine(ImGui::GetWindowWidth() - 26.0f, -1.0f);
    moveLayoutCursorY(-ToolbarOffset);
    const float size = ImGui::GetTextLineHeightWithSpacing();
    if(ImGui::InvisibleButton("delete", ImVec2{size, size}, 0))
        shownStore.clear();

    ImGui::SameLine(ImGui::GetWindowWidth() - 26.0f, -1.0f);
    if(ImGui::IsItemHovered(0))
        ImGui::Text(TrashIcon);
    else
        ImGui::TextDisabled(TrashIcon);
}

bool ConsoleView::drawToolbar(StringArrayView& shownStore) {
    ImGui::SameLine(0.0f, -1.0f);
    moveLayoutCursorY(ToolbarOffset);

    /* Statements of their own, as || would leave boxes undrawn in a frame in which one changed */
    const bool errorsToggled = Ui::checkbox("Errors", &_showErrors);
    ImGui::SameLine(0.0f, -1.0f);
    const bool warningsToggled = Ui::checkbox("Warnings", &_showWarnings);
    ImGui::SameLine(0.0f, -1.0f);
    const bool infoToggled = Ui::checkbox("Info", &_showInfo);

    ImGui::SameLine(ImGui::GetWindowWidth() - 134.0f, -1.0f);
    const bool autoScrollToggled = Ui::checkbox("Auto-scroll", &_autoScroll);
    _scrollToBottom = autoScrollToggled && _autoScroll;

    drawClearButton(shownStore);
    return errorsToggled || warningsToggled || infoToggled;
}

void ConsoleView::drawText(const StringArrayView& shownStore, const bool filtersChanged) {
    /* One count for all tabs: another tab's store differs from the last one's in most cases, and
       then is shown from its end */
    const std::size_t lineCount = shownStore.size();
    _scrollToBottom = _scrollToBottom || (_autoScroll && _lastLineCount != lineCount);
    _lastLineCount = lineCount;

    const ShownLevels levels{_showErrors, _showWarnings, _showInfo};
    const Containers::Array<char> joined = shownText(shownStore, levels);
    const Containers::ArrayView<const char> text = joined.isEmpty()
        ? Containers::ArrayView<const char>{"", 1}
        : joined;
    ConsoleTextEx("#console", shownLines(shownStore, levels), text.data(), textSize(text),
        _showInfo, _showWarnings, _showErrors, filtersChanged, _scrollToBottom,
        ImVec2{-1.0f, -1.0f}, 0);
    _scrollToBottom = false;
}

void ConsoleView::draw() {
    ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2{0.0f, 0.0f});
    const float outerWidth = ImGui::GetWindowContentRegionWidth();
    const float frameHeight = ImGui::GetFrameHeightWithSpacing();
    /* The height is below the smallest that a window may have, which it so gets */
    ImGui::SetNextWindowSize(
        ImVec2{outerWidth * 0.5f, -2.0f - frameHeight}, ImGuiCond_FirstUseEver);
    /* Also submitted when it's collapsed: the line count has to keep up, so that the panel doesn't
       scroll for old lines once it's opened */
    ImGui::Begin(title(), &_open, 0);
    const int tab = drawTabs();

    const std::lock_guard<std::mutex> lock{_application->logMutex};
    StringArrayView& shownStore = store(tab);
    const bool filtersChanged = drawToolbar(shownStore);

    ImGui::BeginChild(
        "ScrollingRegion", ImVec2{0.0f, 0.0f}, false, ImGuiWindowFlags_HorizontalScrollbar);
    ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, ImVec2{4.0f, 1.0f});
    drawText(shownStore, filtersChanged);
    ImGui::PopStyleVar();
    ImGui::EndChild();
    ImGui::End();
    ImGui::PopStyleVar();
}

}
