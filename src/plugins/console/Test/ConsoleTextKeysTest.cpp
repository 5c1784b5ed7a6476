#include <string>
#include <vector>

#include "plugins/console/Test/ConsoleTextFixture.h"

using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

constexpr ImGuiKeyModFlags None = ImGuiKeyModFlags_None;
constexpr ImGuiKeyModFlags Ctrl = ImGuiKeyModFlags_Ctrl;
constexpr ImGuiKeyModFlags Shift = ImGuiKeyModFlags_Shift;
constexpr ImGuiKeyModFlags Alt = ImGuiKeyModFlags_Alt;
constexpr ImGuiKeyModFlags Super = ImGuiKeyModFlags_Super;

enum class System { Other, MacOS };

class ConsoleTextKeysTest: public ConsoleTextFixture {};

/* The text is "one two three\nfour five six\nseven", the cursor in front of "five" */
struct Case {
    const char* name;
    System system;
    ImGuiKey key;
    ImGuiKeyModFlags modifiers;
    int cursor;
    /* Where the selection starts, -1 for none */
    int selectionStart;
};

void PrintTo(const Case& value, std::ostream* const out) { *out << value.name; }

class ConsoleTextMoveTest: public ConsoleTextFixture, public testing::WithParamInterface<Case> {};

TEST_P(ConsoleTextMoveTest, MovesCursor) {
    frame.io().ConfigMacOSXBehaviors = GetParam().system == System::MacOS;
    append("one two three");
    append("four five six");
    append("seven");
    activate(1, 5);
    ASSERT_EQ(textEdit().cursor, 19);
    input.type(GetParam().key, GetParam().modifiers);
    EXPECT_EQ(textEdit().cursor, GetParam().cursor);
    if(GetParam().selectionStart == -1) {
        EXPECT_FALSE(state().HasSelection());
    } else {
        EXPECT_EQ(textEdit().select_start, GetParam().selectionStart);
        EXPECT_EQ(textEdit().select_end, textEdit().cursor);
    }
    EXPECT_TRUE(isActive());
}

INSTANTIATE_TEST_SUITE_P(Keys, ConsoleTextMoveTest,
    testing::Values(Case{"Left", System::Other, ImGuiKey_LeftArrow, None, 18, -1},
        Case{"LeftShift", System::Other, ImGuiKey_LeftArrow, Shift, 18, 19},
        Case{"LeftCtrl", System::Other, ImGuiKey_LeftArrow, Ctrl, 14, -1},
        Case{"LeftCtrlShift", System::Other, ImGuiKey_LeftArrow, Ctrl | Shift, 14, 19},
        Case{"LeftAlt", System::Other, ImGuiKey_LeftArrow, Alt, 18, -1},
        Case{"LeftSuper", System::Other, ImGuiKey_LeftArrow, Super, 18, -1},
        Case{"LeftAltMac", System::MacOS, ImGuiKey_LeftArrow, Alt, 14, -1},
        Case{"LeftCtrlMac", System::MacOS, ImGuiKey_LeftArrow, Ctrl, 18, -1},
        Case{"LeftSuperMac", System::MacOS, ImGuiKey_LeftArrow, Super, 14, -1},
        Case{"LeftSuperShiftMac", System::MacOS, ImGuiKey_LeftArrow, Super | Shift, 14, 19},
        Case{"LeftSuperAltMac", System::MacOS, ImGuiKey_LeftArrow, Super | Alt, 14, -1},
        Case{"LeftSuperCtrlMac", System::MacOS, ImGuiKey_LeftArrow, Super | Ctrl, 18, -1},
        Case{"Right", System::Other, ImGuiKey_RightArrow, None, 20, -1},
        Case{"RightShift", System::Other, ImGuiKey_RightArrow, Shift, 20, 19},
        Case{"RightCtrl", System::Other, ImGuiKey_RightArrow, Ctrl, 24, -1},
        Case{"RightCtrlShift", System::Other, ImGuiKey_RightArrow, Ctrl | Shift, 24, 19},
        Case{"RightAltMac", System::MacOS, ImGuiKey_RightArrow, Alt, 24, -1},
        Case{"RightSuperMac", System::MacOS, ImGuiKey_RightArrow, Super, 27, -1},
        Case{"Up", System::Other, ImGuiKey_UpArrow, None, 5, -1},
        Case{"UpShift", System::Other, ImGuiKey_UpArrow, Shift, 5, 19},
        Case{"UpSuperMac", System::MacOS, ImGuiKey_UpArrow, Super, 0, -1},
        Case{"UpSuperShiftMac", System::MacOS, ImGuiKey_UpArrow, Super | Shift, 0, 19},
        Case{"Down", System::Other, ImGuiKey_DownArrow, None, 33, -1},
        Case{"DownShift", System::Other, ImGuiKey_DownArrow, Shift, 33, 19},
        Case{"DownSuperMac", System::MacOS, ImGuiKey_DownArrow, Super, 33, -1},
        Case{"Home", System::Other, ImGuiKey_Home, None, 14, -1},
        Case{"HomeShift", System::Other, ImGuiKey_Home, Shift, 14, 19},
        Case{"HomeCtrl", System::Other, ImGuiKey_Home, Ctrl, 0, -1},
        Case{"HomeCtrlShift", System::Other, ImGuiKey_Home, Ctrl | Shift, 0, 19},
        Case{"End", System::Other, ImGuiKey_End, None, 27, -1},
        Case{"EndShift", System::Other, ImGuiKey_End, Shift, 27, 19},
        Case{"EndCtrl", System::Other, ImGuiKey_End, Ctrl, 33, -1},
        Case{"EndCtrlShift", System::Other, ImGuiKey_End, Ctrl | Shift, 33, 19}),
    [](const auto& parameter) { return parameter.param.name; });

TEST_F(ConsoleTextKeysTest, SelectAllNeedsShortcut) {
    append("first");
    append("second");
    activate();
    input.type(ImGuiKey_A);
    EXPECT_FALSE(state().HasSelection());
    input.type(ImGuiKey_A, Ctrl | Shift);
    EXPECT_FALSE(state().HasSelection());
    input.type(ImGuiKey_A, Super);
    EXPECT_FALSE(state().HasSelection());
    input.type(ImGuiKey_A, Ctrl);
    EXPECT_EQ(textEdit().select_start, 0);
    EXPECT_EQ(textEdit().select_end, 12);
    EXPECT_EQ(textEdit().cursor, 12);
}

TEST_F(ConsoleTextKeysTest, ShortcutIsSuperOnMacOS) {
    frame.io().ConfigMacOSXBehaviors = true;
    append("text");
    activate();
    input.type(ImGuiKey_A, Ctrl);
    EXPECT_FALSE(state().HasSelection());
    input.type(ImGuiKey_A, Super);
    EXPECT_TRUE(state().HasSelection());
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_FALSE(frame.isClipboardSet);
    input.type(ImGuiKey_C, Super);
    EXPECT_EQ(frame.clipboard, "text");
}

TEST_F(ConsoleTextKeysTest, SelectAllScrollsToEnd) {
    appendNumbers(1000);
    activate();
    input.type(ImGuiKey_A, Ctrl);
    EXPECT_EQ(child()->Scroll.y, 1000.0f * FontSize - size.y);
}

TEST_F(ConsoleTextKeysTest, CopyWithoutSelectionTakesAll) {
    append("first");
    append("\xc3\xa4\xe2\x82\xac");
    append("");
    activate();
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_EQ(frame.clipboard, "first\n\xc3\xa4\xe2\x82\xac\n");
}

TEST_F(ConsoleTextKeysTest, CopyTakesSelection) {
    append("f\xc3\xa4rst");
    append("second");
    select(0, 1, 1, 3);
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_EQ(frame.clipboard, "\xc3\xa4rst\nsec");
    select(1, 4, 1, 2);
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_EQ(frame.clipboard, "co");
}

TEST_F(ConsoleTextKeysTest, CtrlInsertCopiesEverywhere) {
    append("text");
    activate();
    input.type(ImGuiKey_Insert);
    EXPECT_FALSE(frame.isClipboardSet);
    input.type(ImGuiKey_Insert, Ctrl | Shift);
    EXPECT_FALSE(frame.isClipboardSet);
    input.type(ImGuiKey_Insert, Ctrl);
    EXPECT_EQ(frame.clipboard, "text");
    frame.clipboard.clear();
    frame.io().ConfigMacOSXBehaviors = true;
    input.type(ImGuiKey_Insert, Ctrl);
    EXPECT_EQ(frame.clipboard, "text");
}

TEST_F(ConsoleTextKeysTest, CopyOfEmptyTextIsEmpty) {
    frame.clipboard = "before";
    activate();
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_TRUE(frame.isClipboardSet);
    EXPECT_EQ(frame.clipboard, "");
}

TEST_F(ConsoleTextKeysTest, CopyWithoutClipboardDoesNothing) {
    append("text");
    activate();
    frame.io().SetClipboardTextFn = nullptr;
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_FALSE(frame.isClipboardSet);
    EXPECT_TRUE(isActive());
}

TEST_F(ConsoleTextKeysTest, FirstKeyOfTheListWins) {
    append("text");
    activate();
    input.hold(Ctrl);
    frame.io().KeysDown[ImGuiKey_End] = true;
    input.keyDown(ImGuiKey_C);
    EXPECT_EQ(textEdit().cursor, 4);
    EXPECT_FALSE(frame.isClipboardSet);
}

TEST_F(ConsoleTextKeysTest, InactiveTextIgnoresKeys) {
    append("text");
    select(0, 1, 0, 3);
    input.type(ImGuiKey_Escape);
    input.type(ImGuiKey_LeftArrow);
    input.type(ImGuiKey_C, Ctrl);
    EXPECT_EQ(textEdit().cursor, 3);
    EXPECT_FALSE(frame.isClipboardSet);
}

TEST_F(ConsoleTextKeysTest, KeysOfTheActivatingFrameAreIgnored) {
    append("text");
    input.idle(2);
    input.moveTo(at(0, 2));
    frame.io().KeysDown[ImGuiKey_LeftArrow] = true;
    input.press();
    EXPECT_TRUE(isActive());
    EXPECT_EQ(textEdit().cursor, 2);
}

TEST_F(ConsoleTextKeysTest, HeldKeyRepeats) {
    append(std::string(100, 'x'));
    activate();
    input.keyDown(ImGuiKey_RightArrow);
    EXPECT_EQ(textEdit().cursor, 1);
    input.idle(int((frame.io().KeyRepeatDelay + 4.0f * frame.io().KeyRepeatRate) * 60.0f) + 1);
    EXPECT_GE(textEdit().cursor, 4);
    EXPECT_LE(textEdit().cursor, 7);
}

TEST_F(ConsoleTextKeysTest, UnmappedKeyIsSkipped) {
    append("text");
    activate(0, 2);
    frame.io().KeyMap[ImGuiKey_LeftArrow] = -1;
    input.type(ImGuiKey_LeftArrow);
    EXPECT_EQ(textEdit().cursor, 2);
    input.type(ImGuiKey_RightArrow);
    EXPECT_EQ(textEdit().cursor, 3);
}

TEST_F(ConsoleTextKeysTest, CtrlArrowsScrollByARow) {
    appendNumbers(1000);
    activate();
    input.type(ImGuiKey_UpArrow, Ctrl);
    input.idle();
    EXPECT_EQ(child()->Scroll.y, 0.0f);
    input.type(ImGuiKey_DownArrow, Ctrl);
    input.type(ImGuiKey_DownArrow, Ctrl);
    input.idle();
    EXPECT_EQ(child()->Scroll.y, 2.0f * FontSize);
    input.type(ImGuiKey_UpArrow, Ctrl);
    input.idle();
    EXPECT_EQ(child()->Scroll.y, FontSize);
    EXPECT_EQ(textEdit().cursor, 0);

    ImGui::SetScrollY(child(), child()->ScrollMax.y);
    input.idle(2);
    input.type(ImGuiKey_DownArrow, Ctrl);
    input.idle();
    EXPECT_EQ(child()->Scroll.y, child()->ScrollMax.y);
}

TEST_F(ConsoleTextKeysTest, CursorIsFollowedAtOnce) {
    appendNumbers(1000);
    activate();
    input.hold(Ctrl);
    input.keyDown(ImGuiKey_End);
    EXPECT_EQ(child()->Scroll.y, 1000.0f * FontSize - size.y);
    /* In the very frame of the key */
    EXPECT_EQ(drawnTexts("##text").back().text, "999");
    input.keyUp(ImGuiKey_End);
    input.keyDown(ImGuiKey_Home);
    EXPECT_EQ(child()->Scroll.y, 0.0f);
    EXPECT_EQ(drawnTexts("##text").front().text, "0");
}

TEST_F(ConsoleTextKeysTest, EmptyTextTakesAllKeys) {
    activate();
    for(const ImGuiKey key: {ImGuiKey_LeftArrow, ImGuiKey_RightArrow, ImGuiKey_UpArrow,
            ImGuiKey_DownArrow, ImGuiKey_Home, ImGuiKey_End, ImGuiKey_A})
        for(const ImGuiKeyModFlags modifiers: {None, Shift, Ctrl, Ctrl | Shift, Alt, Super}) {
            input.type(key, modifiers);
            EXPECT_EQ(textEdit().cursor, 0);
            EXPECT_FALSE(state().HasSelection());
        }
}

TEST_F(ConsoleTextKeysTest, EscapeReleases) {
    append("text");
    activate(0, 2);
    input.type(ImGuiKey_Escape);
    EXPECT_FALSE(isActive());
    EXPECT_EQ(textEdit().cursor, 2);
}

}
