#include <cmath>
#include <string>
#include <vector>

#include "plugins/console/Test/ConsoleTextFixture.h"

using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

class ConsoleTextSelectionTest: public ConsoleTextFixture {};

TEST_F(ConsoleTextSelectionTest, ClickActivatesAndPlacesCursor) {
    append("first");
    append("second");
    activate(1, 3);
    EXPECT_TRUE(isActive());
    EXPECT_TRUE(isOwned());
    EXPECT_EQ(textEdit().cursor, 9);
    EXPECT_EQ(textEdit().select_start, 9);
    EXPECT_EQ(textEdit().select_end, 9);
    EXPECT_EQ(state().BufCapacityA, int(text.size()) + 1);
    EXPECT_STREQ(state().InitialTextA.Data, "first\nsecond");
    EXPECT_TRUE(selection().empty());
}

TEST_F(ConsoleTextSelectionTest, ClickGoesToNearerSideOfCharacter) {
    append("text");
    activate();
    ImVec2 position = at(0, 2);
    position.x += 0.5f * CharacterWidth;
    input.click(position);
    EXPECT_EQ(textEdit().cursor, 3);
}

TEST_F(ConsoleTextSelectionTest, ClickOutsideOfTextGoesToItsEnds) {
    append("first");
    append("second");
    activate(0, 50);
    EXPECT_EQ(textEdit().cursor, 5);
    input.click(at(8, 0));
    EXPECT_EQ(textEdit().cursor, 12);
    input.click({3.0f, 1.0f});
    EXPECT_EQ(textEdit().cursor, 0);
}

TEST_F(ConsoleTextSelectionTest, ShiftClickDoesNotExtend) {
    append("a longer line");
    activate(0, 2);
    input.hold(ImGuiKeyModFlags_Shift);
    input.click(at(0, 8));
    EXPECT_EQ(textEdit().cursor, 8);
    EXPECT_FALSE(state().HasSelection());
}

TEST_F(ConsoleTextSelectionTest, DragSelects) {
    append("first");
    append("second");
    select(0, 1, 1, 4);
    EXPECT_EQ(textEdit().select_start, 1);
    EXPECT_EQ(textEdit().select_end, 10);
    EXPECT_EQ(textEdit().cursor, 10);
    select(1, 4, 0, 1);
    EXPECT_EQ(textEdit().select_start, 10);
    EXPECT_EQ(textEdit().cursor, 1);
}

TEST_F(ConsoleTextSelectionTest, RowsAreHighlightedOneByOne) {
    append("first");
    append("");
    append("second");
    select(0, 2, 2, 3);
    const std::vector<DrawnQuad> rows = selection();
    ASSERT_EQ(rows.size(), 3);
    const float x = FramePadding.x;
    const float y = FramePadding.y;
    EXPECT_EQ(rows[0].min.x, x + 2.0f * CharacterWidth);
    EXPECT_EQ(rows[0].max.x, x + 5.0f * CharacterWidth);
    EXPECT_EQ(rows[0].min.y, y);
    EXPECT_EQ(rows[0].max.y, y + FontSize);
    /* Half of a space, so that a selected empty row can be seen */
    EXPECT_EQ(rows[1].min.x, x);
    EXPECT_EQ(rows[1].max.x, x + std::floor(CharacterWidth * 0.5f));
    EXPECT_EQ(rows[1].min.y, y + FontSize);
    EXPECT_EQ(rows[2].min.x, x);
    EXPECT_EQ(rows[2].max.x, x + 3.0f * CharacterWidth);
    EXPECT_EQ(rows[2].max.y, y + 3.0f * FontSize);
}

TEST_F(ConsoleTextSelectionTest, NewlineAtEndOfSelectionMarksNoFurtherRow) {
    append("first");
    append("second");
    select(0, 2, 1, 0);
    ASSERT_EQ(textEdit().select_end, 6);
    EXPECT_EQ(selection().size(), 1);
}

TEST_F(ConsoleTextSelectionTest, CollapsedSelectionIsNotDrawn) {
    append("text");
    select(0, 1, 0, 3);
    ASSERT_EQ(selection().size(), 1);
    input.moveTo(at(0, 2));
    input.press();
    EXPECT_TRUE(selection().empty());
}

TEST_F(ConsoleTextSelectionTest, HighlightStaysInFrame) {
    append(std::string(500, 'W'));
    appendNumbers(1000);
    activate();
    input.type(ImGuiKey_A, ImGuiKeyModFlags_Ctrl);
    input.idle();
    ASSERT_FALSE(selection().empty());
    EXPECT_LT(selection().size(), 18);
    const ImVec4 box = boundingBox(selection());
    EXPECT_GE(box.x, 0.0f);
    EXPECT_GE(box.y, 0.0f);
    EXPECT_LE(box.z, size.x - child()->ScrollbarSizes.x);
    EXPECT_LE(box.w, size.y);
}

TEST_F(ConsoleTextSelectionTest, DoubleClickSelectsAllUntilReleased) {
    append("first");
    append("second");
    activate();
    input.moveTo(at(0, 1));
    input.press();
    input.release();
    input.press();
    EXPECT_EQ(textEdit().select_start, 0);
    EXPECT_EQ(textEdit().select_end, 12);
    EXPECT_TRUE(state().SelectedAllMouseLock);
    input.moveTo(at(0, 3));
    EXPECT_EQ(textEdit().select_end, 12);
    input.release();
    EXPECT_FALSE(state().SelectedAllMouseLock);
    EXPECT_EQ(textEdit().select_end, 12);
}

TEST_F(ConsoleTextSelectionTest, DoubleClickSelectsWordOnMacOS) {
    frame.io().ConfigMacOSXBehaviors = true;
    append("some longer words");
    activate();
    input.doubleClick(at(0, 7));
    EXPECT_EQ(textEdit().select_start, 5);
    /* To the next word: how far a word goes is chosen when Dear ImGui is compiled */
    EXPECT_EQ(textEdit().select_end, 12);
    EXPECT_FALSE(state().SelectedAllMouseLock);
}

TEST_F(ConsoleTextSelectionTest, DragBelowFrameScrolls) {
    appendNumbers(1000);
    input.idle(2);
    input.moveTo(at(2, 0));
    input.press();
    input.moveTo({50.0f, 300.0f});
    input.moveTo({51.0f, 300.0f});
    EXPECT_GT(child()->Scroll.y, 0.0f);
    EXPECT_GT(textEdit().cursor, 40);
    EXPECT_FALSE(state().CursorFollow);
}

TEST_F(ConsoleTextSelectionTest, FiltersChangedCollapsesToCursor) {
    append("first");
    append("second");
    select(0, 1, 1, 4);
    filtersChanged = true;
    input.idle();
    EXPECT_EQ(textEdit().cursor, 10);
    EXPECT_EQ(textEdit().select_start, 10);
    EXPECT_EQ(textEdit().select_end, 10);
    EXPECT_TRUE(selection().empty());
}

TEST_F(ConsoleTextSelectionTest, SelectionEndsWithShrunkText) {
    append("first");
    append("second");
    select(0, 2, 1, 4);
    lines.clear();
    append("fir");
    input.idle();
    EXPECT_EQ(textEdit().select_start, 2);
    EXPECT_EQ(textEdit().select_end, 3);
    ASSERT_EQ(selection().size(), 1);

    lines.clear();
    input.idle();
    EXPECT_FALSE(state().HasSelection());
    EXPECT_EQ(state().CurLenW, 0);
    EXPECT_TRUE(selection().empty());
}

TEST_F(ConsoleTextSelectionTest, SelectionStaysDimmedAfterEscape) {
    append("first");
    select(0, 1, 0, 4);
    ASSERT_EQ(selection().size(), 1);
    EXPECT_TRUE(dimmedSelection().empty());
    input.type(ImGuiKey_Escape);
    EXPECT_FALSE(isActive());
    EXPECT_TRUE(isOwned());
    EXPECT_TRUE(selection().empty());
    ASSERT_EQ(dimmedSelection().size(), 1);
    EXPECT_EQ(dimmedSelection()[0].min.x, FramePadding.x + CharacterWidth);

    /* It still follows the text */
    lines.clear();
    append("fi");
    input.idle();
    ASSERT_EQ(dimmedSelection().size(), 1);
    EXPECT_EQ(dimmedSelection()[0].max.x, FramePadding.x + 2.0f * CharacterWidth);
}

TEST_F(ConsoleTextSelectionTest, ClickElsewhereReleases) {
    append("first");
    select(0, 1, 0, 4);
    input.click({buttonPosition.x + 5.0f, buttonPosition.y + 5.0f});
    EXPECT_FALSE(isActive());
    EXPECT_TRUE(isOwned());
    EXPECT_EQ(dimmedSelection().size(), 1);
    input.click({590.0f, 390.0f});
    EXPECT_FALSE(isActive());
}

TEST_F(ConsoleTextSelectionTest, OtherTextTakesStateOver) {
    append("first");
    select(0, 1, 0, 4);
    input.click({otherPosition.x + 5.0f, otherPosition.y + 5.0f});
    EXPECT_FALSE(isActive());
    EXPECT_FALSE(isOwned());
    EXPECT_TRUE(dimmedSelection().empty());
    input.text("typed");
    EXPECT_STREQ(otherText, "typed");

    /* And back, with nothing left of what it was */
    input.click(at(0, 2));
    EXPECT_TRUE(isOwned());
    EXPECT_EQ(textEdit().cursor, 2);
    EXPECT_FALSE(state().HasSelection());
}

TEST_F(ConsoleTextSelectionTest, ScrollbarKeepsSelectionAndGivesFocusBack) {
    appendNumbers(1000);
    select(0, 0, 2, 1);
    input.type(ImGuiKey_Escape);
    ASSERT_EQ(dimmedSelection().size(), 3);
    input.moveTo({size.x - 5.0f, 8.0f});
    input.press();
    const ImGuiID scrollbar = ImGui::GetWindowScrollbarID(child(), ImGuiAxis_Y);
    ASSERT_EQ(frame.context()->ActiveId, scrollbar);
    input.idle();
    EXPECT_EQ(selection().size(), 3);
    EXPECT_TRUE(dimmedSelection().empty());
    input.moveTo({size.x - 5.0f, 100.0f});
    input.idle();
    EXPECT_GT(child()->Scroll.y, 100.0f);
    EXPECT_TRUE(selection().empty());
    EXPECT_TRUE(state().HasSelection());

    input.release();
    input.idle();
    EXPECT_TRUE(isActive());
    EXPECT_TRUE(state().HasSelection());
    EXPECT_GT(child()->Scroll.y, 100.0f);
}

TEST_F(ConsoleTextSelectionTest, NoScrollbarFocusForStrangers) {
    appendNumbers(1000);
    input.idle(2);
    input.drag({size.x - 5.0f, 8.0f}, {size.x - 5.0f, 100.0f});
    input.idle(2);
    EXPECT_FALSE(isActive());
    EXPECT_FALSE(isOwned());
}

TEST_F(ConsoleTextSelectionTest, HorizontalOffsetMovesHighlightOnly) {
    append(std::string(200, 'W'));
    activate();
    input.type(ImGuiKey_End, ImGuiKeyModFlags_Shift);
    input.idle();
    EXPECT_GT(state().ScrollX, 0.0f);
    ASSERT_EQ(selection().size(), 1);
    EXPECT_EQ(selection()[0].min.x, 0.0f);
    EXPECT_EQ(selection()[0].max.x, FramePadding.x + 200.0f * CharacterWidth - state().ScrollX);
    EXPECT_LT(boundingBox(drawnGlyphs(ImGui::GetColorU32(ImGuiCol_Text), "##text")).x,
        FramePadding.x + CharacterWidth);

    input.type(ImGuiKey_Home);
    EXPECT_EQ(state().ScrollX, 0.0f);
}

TEST_F(ConsoleTextSelectionTest, HorizontalOffsetGoesInQuartersOfTheWidth) {
    append(std::string(200, 'W'));
    activate();
    input.type(ImGuiKey_End);
    const float width = size.x - child()->ScrollbarSizes.x;
    EXPECT_EQ(state().ScrollX, 200.0f * CharacterWidth - width + width * 0.25f);
}

TEST_F(ConsoleTextSelectionTest, NoHorizontalScrollKeepsOffsetAtZero) {
    flags = ImGuiInputTextFlags_NoHorizontalScroll;
    append(std::string(200, 'W'));
    activate();
    input.type(ImGuiKey_End);
    EXPECT_EQ(textEdit().cursor, 200);
    EXPECT_EQ(state().ScrollX, 0.0f);
    EXPECT_EQ(state().Flags, int(ImGuiInputTextFlags_NoHorizontalScroll));
}

TEST_F(ConsoleTextSelectionTest, AlwaysOverwriteSetsInsertMode) {
    append("text");
    activate();
    EXPECT_EQ(textEdit().insert_mode, 0);
    input.type(ImGuiKey_Escape);
    flags = ImGuiInputTextFlags_AlwaysOverwrite;
    activate();
    EXPECT_EQ(textEdit().insert_mode, 1);
}

TEST_F(ConsoleTextSelectionTest, TabIsClaimedByFlagOnly) {
    append("text");
    activate();
    const ImU64 tab = ImU64{1} << ImGuiKey_Tab;
    EXPECT_FALSE(frame.context()->ActiveIdUsingKeyInputMask & tab);
    EXPECT_TRUE(frame.context()->ActiveIdUsingKeyInputMask & (ImU64{1} << ImGuiKey_PageUp));
    for(const int flag:
        {int(ImGuiInputTextFlags_AllowTabInput), int(ImGuiInputTextFlags_CallbackCompletion)}) {
        input.type(ImGuiKey_Escape);
        flags = flag;
        activate();
        EXPECT_TRUE(frame.context()->ActiveIdUsingKeyInputMask & tab);
    }
}

TEST_F(ConsoleTextSelectionTest, MouseCursorIsTextCursorAboveText) {
    append("text");
    input.idle(2);
    input.moveTo(at(0, 0));
    EXPECT_EQ(ImGui::GetMouseCursor(), ImGuiMouseCursor_TextInput);
    input.moveTo({buttonPosition.x + 5.0f, buttonPosition.y + 5.0f});
    EXPECT_EQ(ImGui::GetMouseCursor(), ImGuiMouseCursor_Arrow);
}

TEST_F(ConsoleTextSelectionTest, ActiveTextWantsTextInput) {
    append("text");
    input.idle(2);
    EXPECT_FALSE(frame.io().WantTextInput);
    activate();
    EXPECT_TRUE(frame.io().WantTextInput);
    EXPECT_TRUE(frame.context()->ActiveIdAllowOverlap);
    input.press();
    EXPECT_FALSE(frame.context()->ActiveIdAllowOverlap);
}

TEST_F(ConsoleTextSelectionTest, KeyboardNavigationActivates) {
    frame.io().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    append("text");
    for(const ImGuiKey key: {ImGuiKey_Enter, ImGuiKey_Space}) {
        input.idle(2);
        ImGui::FocusWindow(ImGui::FindWindowByName("Window"));
        frame.context()->NavDisableHighlight = false;
        ImGui::SetNavID(id, ImGuiNavLayer_Main, 0, ImRect{});
        input.type(key);
        EXPECT_TRUE(isActive()) << key;
        input.type(ImGuiKey_Escape);
        EXPECT_FALSE(isActive());
    }
}

/* The position survives, clamped to what the text has become */
TEST_F(ConsoleTextSelectionTest, ReactivationResumesSelection) {
    frame.io().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    append("first");
    select(0, 1, 0, 4);
    input.type(ImGuiKey_Escape);
    lines.clear();
    append("fir");
    ImGui::SetNavID(id, ImGuiNavLayer_Main, 0, ImRect{});
    frame.context()->NavDisableHighlight = false;
    input.type(ImGuiKey_Enter);
    EXPECT_TRUE(isActive());
    EXPECT_EQ(textEdit().select_start, 1);
    EXPECT_EQ(textEdit().select_end, 3);
    EXPECT_EQ(textEdit().cursor, 3);
}

/* The first conversion has room for one character less than the one in every frame */
TEST_F(ConsoleTextSelectionTest, ReactivationLosesLastCharacterWithoutNulInSize) {
    sizeCountsNul = false;
    append("text");
    activate();
    input.type(ImGuiKey_A, ImGuiKeyModFlags_Ctrl);
    EXPECT_EQ(textEdit().select_end, 4);
    input.type(ImGuiKey_Escape);
    EXPECT_EQ(textEdit().select_end, 4);
    input.moveTo(buttonPosition);
    frame.io().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    ImGui::SetNavID(id, ImGuiNavLayer_Main, 0, ImRect{});
    frame.context()->NavDisableHighlight = false;
    input.type(ImGuiKey_Enter);
    ASSERT_TRUE(isActive());
    EXPECT_EQ(textEdit().select_end, 3);
    EXPECT_EQ(state().CurLenW, 4);
}

}
