#include "plugins/console/ConsoleView.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Tools/Log.h"
#include "plugins/console/Test/ConsolePanel.h"
#include "testing/HeadlessFrameDrawing.h"

using namespace Corrade;
using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

const std::string Prefix = "[2024-03-07 09:05:02.045]";
constexpr ImU32 ErrorColor = 0xff0000ff;
constexpr ImU32 WarningColor = 0xff00ccff;

void append(StringArray& lines, const std::string& line, const char* const tag = "[info]") {
    lines.append((Prefix + tag + " " + line).c_str(), -1);
}

class ConsoleViewTest: public testing::Test {
protected:
    /* Where a label of the toolbar or the tabs begins. The last one of that name, as the window's
       title is drawn first. */
    ImVec2 labelPosition(const std::string& label) const {
        std::string text;
        std::vector<ImVec2> positions;
        for(const DrawnQuad& i: drawnQuads("Console"))
            if(i.glyph) {
                text += i.glyph < 128 ? char(i.glyph) : '?';
                positions.push_back(i.min);
            }
        const std::size_t found = text.rfind(label);
        EXPECT_NE(found, std::string::npos) << label;
        return found == std::string::npos ? ImVec2{} : positions[found];
    }

    /* Auto-scroll goes to the end as it was in the frame before */
    void fillAndScroll(StringArray& store) {
        panel.settle();
        for(int i = 0; i != 200; ++i)
            append(store, "line");
        panel.input.idle(2);
        append(store, "last line");
        panel.input.idle(2);
    }

    void click(const std::string& label) {
        const ImVec2 position = labelPosition(label);
        panel.input.click({position.x + 2.0f, position.y + 3.0f});
    }

    std::vector<DrawnText> lines() const { return drawnTexts("#console"); }

    ImVec2 clearButton() const {
        return {ImGui::GetIO().DisplaySize.x - 20.0f, labelPosition("Auto").y + 4.0f};
    }

    bool isAtEnd() const { return panel.textWindow()->Scroll.y == panel.textWindow()->ScrollMax.y; }

    void scrollToTop() {
        ImGui::SetScrollY(panel.textWindow(), 0.0f);
        panel.input.idle(2);
    }

    ConsolePanel panel;
};

TEST_F(ConsoleViewTest, TitleIsConsole) { EXPECT_STREQ(panel.view.title(), "Console"); }

TEST_F(ConsoleViewTest, ShowsToolbarAndTabs) {
    panel.settle();
    for(const char* const label:
        {"Console", "Server", "JavaScript", "Errors", "Warnings", "Info", "Auto-scroll"})
        labelPosition(label);
    const float width = ImGui::GetIO().DisplaySize.x;
    EXPECT_GT(labelPosition("Auto-scroll").x, width - 134.0f);
    EXPECT_LT(labelPosition("Auto-scroll").x, width - 26.0f);
}

TEST_F(ConsoleViewTest, WindowHasSmallestHeightAtFirst) {
    panel.input.idle();
    const ImGuiWindow* const window = ImGui::FindWindowByName("Console");
    EXPECT_EQ(window->Size.y, ImGui::GetStyle().WindowMinSize.y);
}

TEST_F(ConsoleViewTest, ShowsConsoleFirst) {
    append(panel.consoleLines(), "console");
    append(panel.serverLines(), "server");
    append(panel.javaScriptLines(), "script");
    panel.settle();
    ASSERT_EQ(lines().size(), 1);
    EXPECT_NE(lines()[0].text.find("console"), std::string::npos);
}

TEST_F(ConsoleViewTest, TabsShowTheirStores) {
    append(panel.consoleLines(), "console");
    append(panel.serverLines(), "server");
    append(panel.javaScriptLines(), "script");
    panel.settle();
    click("Server");
    ASSERT_EQ(lines().size(), 1);
    EXPECT_NE(lines()[0].text.find("server"), std::string::npos);
    click("JavaScript");
    ASSERT_EQ(lines().size(), 1);
    EXPECT_NE(lines()[0].text.find("script"), std::string::npos);
    click("Console");
    EXPECT_NE(lines()[0].text.find("console"), std::string::npos);
}

TEST_F(ConsoleViewTest, LogLinesArriveInConsole) {
    panel.settle();
    testing::internal::CaptureStdout();
    std::thread{[] { log(LogLevel::Info, "from another thread"); }}.join();
    testing::internal::GetCapturedStdout();
    panel.input.idle(2);
    ASSERT_EQ(lines().size(), 1);
    EXPECT_NE(lines()[0].text.find("[info]fromanotherthread"), std::string::npos);
}

TEST_F(ConsoleViewTest, BoxesHideLevels) {
    append(panel.consoleLines(), "e", "[error]");
    append(panel.consoleLines(), "w", "[warn]");
    append(panel.consoleLines(), "i");
    append(panel.consoleLines(), "v", "[verbose]");
    panel.settle();
    EXPECT_EQ(lines().size(), 4);
    click("Errors");
    ASSERT_EQ(lines().size(), 3);
    EXPECT_EQ(lines()[0].color, WarningColor);
    click("Warnings");
    EXPECT_EQ(lines().size(), 2);
    click("Info");
    EXPECT_TRUE(lines().empty());
    click("Errors");
    ASSERT_EQ(lines().size(), 1);
    EXPECT_EQ(lines()[0].color, ErrorColor);
}

/* One line in the text and one row to scroll into */
TEST_F(ConsoleViewTest, AllBoxesOffShowEmptyText) {
    for(int i = 0; i != 100; ++i)
        append(panel.consoleLines(), "line");
    panel.settle();
    for(const char* const box: {"Errors", "Warnings", "Info"})
        click(box);
    panel.input.idle(2);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(panel.textWindow()->ContentSize.y, 2.0f * ImGui::GetFontSize());
}

/* Rows of the text are counted with verbose lines, though they aren't drawn */
TEST_F(ConsoleViewTest, VerboseLinesStayInTextWhileTwoBoxesAreOn) {
    append(panel.consoleLines(), "e", "[error]");
    append(panel.consoleLines(), "v", "[verbose]");
    append(panel.consoleLines(), "i");
    panel.settle();
    click("Info");
    panel.input.idle(2);
    EXPECT_EQ(panel.textWindow()->ContentSize.y, 3.0f * ImGui::GetFontSize());
    EXPECT_EQ(lines().size(), 1);

    click("Info");
    click("Errors");
    click("Warnings");
    panel.input.idle(2);
    EXPECT_EQ(panel.textWindow()->ContentSize.y, 2.0f * ImGui::GetFontSize());
}

TEST_F(ConsoleViewTest, TogglingABoxCollapsesSelection) {
    append(panel.consoleLines(), "line");
    panel.settle();
    panel.input.doubleClick({600.0f, 400.0f});
    panel.input.idle(30);
    ASSERT_TRUE(panel.frame.context()->InputTextState.HasSelection());
    click("Auto-scroll");
    EXPECT_TRUE(panel.frame.context()->InputTextState.HasSelection());
    click("Warnings");
    EXPECT_FALSE(panel.frame.context()->InputTextState.HasSelection());
}

TEST_F(ConsoleViewTest, NewLinesScrollToEnd) {
    fillAndScroll(panel.consoleLines());
    EXPECT_GT(panel.textWindow()->Scroll.y, 1000.0f);
    scrollToTop();
    EXPECT_EQ(panel.textWindow()->Scroll.y, 0.0f);
    append(panel.consoleLines(), "one more");
    panel.input.idle(2);
    EXPECT_GT(panel.textWindow()->Scroll.y, 1000.0f);
}

TEST_F(ConsoleViewTest, ScrollIsRequestedInOneFrameOnly) {
    fillAndScroll(panel.consoleLines());
    append(panel.consoleLines(), "one more");
    panel.input.idle();
    scrollToTop();
    EXPECT_EQ(panel.textWindow()->Scroll.y, 0.0f);
}

TEST_F(ConsoleViewTest, NothingScrollsWithoutAutoScroll) {
    fillAndScroll(panel.consoleLines());
    click("Auto-scroll");
    scrollToTop();
    append(panel.consoleLines(), "one more");
    panel.input.idle(3);
    EXPECT_EQ(panel.textWindow()->Scroll.y, 0.0f);
}

TEST_F(ConsoleViewTest, SwitchingAutoScrollOnScrolls) {
    fillAndScroll(panel.consoleLines());
    click("Auto-scroll");
    scrollToTop();
    click("Auto-scroll");
    EXPECT_TRUE(isAtEnd());
    scrollToTop();
    click("Auto-scroll");
    panel.input.idle(2);
    EXPECT_EQ(panel.textWindow()->Scroll.y, 0.0f);
}

TEST_F(ConsoleViewTest, TabOfOtherLengthIsShownFromItsEnd) {
    fillAndScroll(panel.consoleLines());
    for(int i = 0; i != 201; ++i) {
        append(panel.serverLines(), "line");
        append(panel.javaScriptLines(), "line");
    }
    append(panel.javaScriptLines(), "one more");
    scrollToTop();
    click("Server");
    EXPECT_EQ(panel.textWindow()->Scroll.y, 0.0f);
    click("JavaScript");
    EXPECT_GT(panel.textWindow()->Scroll.y, 1000.0f);
}

TEST_F(ConsoleViewTest, ClearButtonEmptiesShownStoreOnly) {
    append(panel.consoleLines(), "console");
    append(panel.serverLines(), "server");
    append(panel.javaScriptLines(), "script");
    panel.settle();
    click("Server");
    panel.input.click(clearButton());
    EXPECT_TRUE(panel.serverLines().isEmpty());
    EXPECT_EQ(panel.consoleLines().size(), 1);
    EXPECT_EQ(panel.javaScriptLines().size(), 1);
    EXPECT_TRUE(lines().empty());
    click("Console");
    panel.input.click(clearButton());
    EXPECT_TRUE(panel.consoleLines().isEmpty());
    EXPECT_EQ(panel.javaScriptLines().size(), 1);
}

TEST_F(ConsoleViewTest, ClearingEndsSelection) {
    append(panel.consoleLines(), "line");
    panel.settle();
    panel.input.doubleClick({600.0f, 400.0f});
    panel.input.idle(30);
    ASSERT_TRUE(panel.frame.context()->InputTextState.HasSelection());
    panel.input.click(clearButton());
    panel.input.idle();
    EXPECT_FALSE(panel.frame.context()->InputTextState.HasSelection());
}

/* The built-in font has no such glyph and draws its replacement */
TEST_F(ConsoleViewTest, IconLightsUpUnderMouse) {
    panel.settle();
    const auto iconColor = [this] {
        ImU32 color = 0;
        for(const DrawnQuad& i: drawnQuads("Console"))
            if(i.glyph && i.min.x > ImGui::GetIO().DisplaySize.x - 28.0f &&
                i.min.y < clearButton().y + 10.0f)
                color = i.color;
        return color;
    };
    EXPECT_EQ(iconColor(), ImGui::GetColorU32(ImGuiCol_TextDisabled));
    panel.input.moveTo(clearButton());
    EXPECT_EQ(iconColor(), ImGui::GetColorU32(ImGuiCol_Text));
}

TEST_F(ConsoleViewTest, CopyTakesWholeStoreWithoutTouchingIt) {
    append(panel.consoleLines(), "first");
    append(panel.consoleLines(), "second", "[error]");
    panel.settle();
    panel.input.click({600.0f, 400.0f});
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Ctrl);
    EXPECT_EQ(panel.frame.clipboard, Prefix + "[info] first\n" + Prefix + "[error] second");
    EXPECT_EQ(panel.consoleLines().size(), 2);
}

TEST_F(ConsoleViewTest, CollapsedWindowCountsOn) {
    fillAndScroll(panel.consoleLines());
    scrollToTop();
    ImGui::SetWindowCollapsed("Console", true);
    panel.input.idle(2);
    EXPECT_TRUE(lines().empty());
    append(panel.consoleLines(), "one more");
    panel.input.idle(2);
    ImGui::SetWindowCollapsed("Console", false);
    panel.input.idle(4);
    EXPECT_EQ(panel.textWindow()->Scroll.y, 0.0f);
}

TEST_F(ConsoleViewTest, LeavesStacksAndMutexAsTheyWere) {
    panel.settle();
    EXPECT_EQ(panel.frame.context()->StyleVarStack.Size, 0);
    EXPECT_EQ(panel.frame.context()->ColorStack.Size, 0);
    ASSERT_TRUE(panel.application.logMutex.try_lock());
    panel.application.logMutex.unlock();
}

TEST_F(ConsoleViewTest, HoldsMutexWhileReadingStores) {
    struct LockedServer: ServerSource {
        StringArrayView& serverLines() override {
            std::thread{[this] { isLocked = !mutex->try_lock(); }}.join();
            return lines;
        }
        StringArray lines;
        std::mutex* mutex;
        bool isLocked = false;
    };
    auto* const server = new LockedServer;
    server->mutex = &panel.application.logMutex;
    panel.application.editor->serverSource = Containers::Pointer<ServerSource>{server};
    panel.input.idle();
    EXPECT_TRUE(server->isLocked);
}

using ConsoleViewDeathTest = ConsoleViewTest;

TEST_F(ConsoleViewDeathTest, NeedsServerWhicheverTabIsShown) {
    panel.settle();
    panel.application.editor->serverSource = nullptr;
    EXPECT_DEATH(panel.input.idle(), "^Containers::Pointer: the pointer is null\n$");
}

TEST_F(ConsoleViewDeathTest, NeedsScriptLinesWhicheverTabIsShown) {
    panel.settle();
    panel.application.editor->javaScriptLines = nullptr;
    EXPECT_DEATH(panel.input.idle(), "^Containers::Pointer: the pointer is null\n$");
}

TEST_F(ConsoleViewDeathTest, NeedsEditor) {
    panel.settle();
    panel.application.editor = nullptr;
    EXPECT_DEATH(panel.input.idle(), "^Containers::Pointer: the pointer is null\n$");
}

}
