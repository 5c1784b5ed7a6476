#include "editor/ScriptPanel.h"

#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <imgui.h>

#include "ScriptFixture.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine { namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ScriptPanelTest: ScriptFixture {
    ScriptPanelTest() {
        input.idle(2);
        focus();
    }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({800.0f, 100.0f});
        panel.draw(*runner, log);
    }

    void focus() { input.click({100.0f, 30.0f}); }

    /* The text that's drawn somewhere in the panel */
    static bool isShown(const std::string& text) {
        return bool(Testing::placeOfText(text, "Script"));
    }

    void click(const std::string& button) {
        const std::optional<ImVec2> place = Testing::placeOfText(button, "Script");
        ASSERT_TRUE(place) << button;
        input.click({place->x + 3.0f, place->y + 3.0f});
    }

    void finish() {
        runner->waitForEnd();
        input.idle(2);
    }

    void enter(const char* const text) {
        input.text(text);
        input.type(ImGuiKey_Enter);
        finish();
    }

    Testing::HeadlessFrame frame;
    Testing::InputDriver input{frame, [this] { draw(); }};
    ScriptPanel panel;
};

TEST_F(ScriptPanelTest, EnterRunsTheLineAndEmptiesTheField) {
    enter("1+2");
    EXPECT_THAT(lines(), ElementsAre("[info] > 1+2", "[info] 3"));
    EXPECT_FALSE(isShown("1+2"));
    /* The field has kept the keyboard */
    enter("4");
    EXPECT_THAT(lines(), ElementsAre("[info] > 4", "[info] 4"));
}

TEST_F(ScriptPanelTest, ButtonRunsTheLine) {
    input.text("5");
    click("Run");
    finish();
    EXPECT_THAT(lines(), ElementsAre("[info] > 5", "[info] 5"));
    enter("6");
    EXPECT_THAT(lines(), ElementsAre("[info] > 6", "[info] 6"));
}

TEST_F(ScriptPanelTest, ErrorNamesTheInput) {
    enter("1");
    enter("throw 2");
    EXPECT_THAT(lines(),
        ElementsAre("[info] > 1", "[info] 1", "[info] > throw 2", "[error] input 2:1:1: uncaught 2",
            "[error]     @input 2:1:1"));
}

TEST_F(ScriptPanelTest, EmptyLineIsNotRun) {
    enter("");
    enter("  ");
    EXPECT_THAT(lines(), IsEmpty());
    EXPECT_EQ(runner->engine(), ScriptRunner::Engine::None);
}

TEST_F(ScriptPanelTest, ArrowKeysBringEarlierLinesAndTheTypedText) {
    enter("'first'");
    enter("'second'");
    input.text("'typed'");
    input.type(ImGuiKey_UpArrow);
    input.idle();
    EXPECT_TRUE(isShown("'second'"));
    input.type(ImGuiKey_UpArrow);
    input.type(ImGuiKey_UpArrow);
    input.idle();
    EXPECT_TRUE(isShown("'first'"));
    for(int i = 0; i != 3; ++i)
        input.type(ImGuiKey_DownArrow);
    input.idle();
    EXPECT_TRUE(isShown("'typed'"));
    lines();
    for(int i = 0; i != 2; ++i)
        input.type(ImGuiKey_UpArrow);
    input.type(ImGuiKey_Enter);
    finish();
    EXPECT_THAT(lines(), ElementsAre("[info] > 'first'", "[info] \"first\""));
}

TEST_F(ScriptPanelTest, LongLineFits) {
    const std::string number(5000, '1');
    enter(("'" + number + "'.length").c_str());
    EXPECT_EQ(lines().back(), "[info] 5000");
    enter("0");
    for(int i = 0; i != 2; ++i)
        input.type(ImGuiKey_UpArrow);
    input.type(ImGuiKey_Enter);
    finish();
    EXPECT_EQ(lines().back(), "[info] 5000");
}

TEST_F(ScriptPanelTest, LineStaysWhileAnotherIsRunning) {
    input.text("for(;;);");
    input.type(ImGuiKey_Enter);
    input.idle(2);
    EXPECT_TRUE(runner->isRunning());
    EXPECT_TRUE(isShown("Runningfor"));
    input.text("7");
    input.type(ImGuiKey_Enter);
    input.idle(2);
    EXPECT_TRUE(isShown("7"));
    click("Stop");
    finish();
    EXPECT_THAT(lines(), ElementsAre("[info] > for(;;);", "[warn] input 1 was stopped"));
    focus();
    input.type(ImGuiKey_Enter);
    finish();
    EXPECT_THAT(lines(), ElementsAre("[info] > 7", "[info] 7"));
}

TEST_F(ScriptPanelTest, LimitsAndStateAreShown) {
    EXPECT_TRUE(isShown("Theenginestartswiththefirstscript"));
    EXPECT_TRUE(isShown("Limitsofascript:300s,512MB"));
    enter("1");
    EXPECT_TRUE(isShown("Idle"));
    start({5min, 5min, 64});
    input.idle(2);
    EXPECT_TRUE(isShown("Limitsofascript:300s,64MB"));
    enter("{let a = []; for(;;) a.push(1, 2, 3)}");
    EXPECT_TRUE(isShown("Theenginehasended,thenextscriptstartsitanew"));
    enter("1");
    EXPECT_TRUE(isShown("Idle,enginestartedanewonce"));
    enter("{let a = []; for(;;) a.push(1, 2, 3)}");
    enter("1");
    EXPECT_TRUE(isShown("Idle,enginestartedanew2times"));
}

}}
