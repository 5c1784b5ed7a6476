#include "plugins/console/ConsoleTextEx.h"

#include <cmath>
#include <string>
#include <vector>

#include "plugins/console/Test/ConsoleTextFixture.h"

using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

class ConsoleTextExTest: public ConsoleTextFixture {};

TEST_F(ConsoleTextExTest, NothingIsEverEdited) {
    append("text");
    activate();
    EXPECT_FALSE(result);
    for(const ImGuiKey key: {ImGuiKey_Delete, ImGuiKey_Backspace, ImGuiKey_Enter, ImGuiKey_Tab})
        input.type(key);
    input.text("typed");
    for(const ImGuiKey key: {ImGuiKey_X, ImGuiKey_V, ImGuiKey_Z, ImGuiKey_Y})
        input.type(key, ImGuiKeyModFlags_Ctrl);
    EXPECT_FALSE(result);
    EXPECT_EQ(text, "text");
    EXPECT_EQ(state().CurLenW, 4);
    EXPECT_EQ(textEdit().cursor, 0);
    EXPECT_FALSE(frame.isClipboardSet);
}

TEST_F(ConsoleTextExTest, EmptyStoreIsTwoRowsHigh) {
    input.idle(3);
    EXPECT_TRUE(drawnTexts("##text").empty());
    EXPECT_EQ(child()->ContentSize.y, 2.0f * FontSize);
}

TEST_F(ConsoleTextExTest, ContentIsOneRowHigherThanText) {
    appendNumbers(7);
    input.idle(3);
    EXPECT_EQ(child()->ContentSize.y, 8.0f * FontSize);
}

TEST_F(ConsoleTextExTest, LinesAreColouredByTheirTags) {
    append("e", "[error]");
    append("w", "[warn]");
    append("i", "[info]");
    append("v", "[verbose]");
    append("untagged");
    input.idle(2);
    const std::vector<DrawnText> texts = drawnTexts("##text");
    ASSERT_EQ(texts.size(), 5);
    const ImU32 textColor = ImGui::GetColorU32(ImGuiCol_Text);
    EXPECT_EQ(texts[0].color, ErrorColor);
    EXPECT_EQ(texts[1].color, WarningColor);
    EXPECT_EQ(texts[2].color, textColor);
    EXPECT_EQ(texts[3].color, textColor);
    EXPECT_EQ(texts[4].text, "untagged");
    EXPECT_EQ(texts[4].color, textColor);
}

/* The first capital of each line shows where its row is */
TEST_F(ConsoleTextExTest, HiddenLinesTakeNoRow) {
    append("E", "[error]");
    append("W", "[warn]");
    append("I", "[info]");
    append("E", "[error]");
    input.idle(2);
    EXPECT_EQ(drawnTexts("##text").size(), 4);
    const float firstY = drawnTexts("##text")[0].position.y;

    levels = {true, false, true};
    input.idle();
    std::vector<DrawnText> texts = drawnTexts("##text");
    ASSERT_EQ(texts.size(), 3);
    EXPECT_EQ(texts[0].position.y, firstY);
    EXPECT_EQ(texts[1].position.y, firstY + FontSize);
    EXPECT_EQ(texts[2].position.y, firstY + 2.0f * FontSize);
    EXPECT_EQ(texts[2].color, ErrorColor);

    levels = {false, true, false};
    input.idle();
    texts = drawnTexts("##text");
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts[0].color, WarningColor);
    EXPECT_EQ(texts[0].position.y, firstY);
}

TEST_F(ConsoleTextExTest, NothingIsDrawnWithAllLevelsHidden) {
    append("E", "[error]");
    append("W", "[warn]");
    append("I", "[info]");
    levels = {false, false, false};
    input.idle(2);
    EXPECT_TRUE(drawnTexts("##text").empty());
}

TEST_F(ConsoleTextExTest, TagElsewhereCountsAsInfo) {
    append("[error] at the start");
    append(" [error] one too far", "[info]");
    levels = {false, false, true};
    input.idle(2);
    EXPECT_EQ(drawnTexts("##text").size(), 2);
    levels = {true, true, false};
    input.idle();
    EXPECT_TRUE(drawnTexts("##text").empty());
}

TEST_F(ConsoleTextExTest, ShortLineIsTaggedByFollowingBytes) {
    append("short");
    append("19 characters, and:[error]");
    levels = {true, true, false};
    input.idle(2);
    const std::vector<DrawnText> texts = drawnTexts("##text");
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts[0].text, "short");
    EXPECT_EQ(texts[0].color, ErrorColor);
}

/* The text may keep lines that aren't drawn; kept like that */
TEST_F(ConsoleTextExTest, UntaggedLinesAreInTextButNotDrawnWithoutInfo) {
    append("v", "[verbose]");
    append("e", "[error]");
    levels = {true, true, false};
    input.idle(3);
    ASSERT_EQ(drawnTexts("##text").size(), 1);
    EXPECT_EQ(drawnTexts("##text")[0].position.y, drawnGlyphs(ErrorColor, "##text")[0].min.y);
    EXPECT_EQ(child()->ContentSize.y, 3.0f * FontSize);
}

TEST_F(ConsoleTextExTest, LineWithNewlineIsDrawnOverTheNext) {
    lines.append("upper\nlower", -1);
    append("next");
    input.idle(2);
    const std::vector<DrawnText> texts = drawnTexts("##text");
    ASSERT_EQ(texts.size(), 3);
    EXPECT_EQ(texts[1].text, "lower");
    EXPECT_EQ(texts[2].text, "next");
    EXPECT_EQ(texts[1].position.x, texts[2].position.x + 1.0f);
    EXPECT_LT(texts[2].position.y - texts[1].position.y, 4.0f);
}

/* Scrolled so far that the line's first rows are hidden, its last one isn't */
TEST_F(ConsoleTextExTest, LineThatReachesIntoFrameFromAboveIsDrawn) {
    lines.append((std::string(300, '\n') + "lowest").c_str(), -1);
    for(int i = 0; i != 400; ++i)
        append(".");
    input.idle(2);
    ImGui::SetScrollY(child(), 295.0f * FontSize);
    input.idle(2);
    bool isFound = false;
    for(const DrawnText& i: drawnTexts("##text"))
        isFound = isFound || i.text.find("lowest") != std::string::npos;
    EXPECT_TRUE(isFound);
}

TEST_F(ConsoleTextExTest, LongLineIsCutAtInnerEdge) {
    append(std::string(1000, 'W'));
    appendNumbers(50);
    input.idle(3);
    ASSERT_GT(child()->ScrollbarSizes.x, 0.0f);
    const float right = boundingBox(drawnGlyphs(ImGui::GetColorU32(ImGuiCol_Text), "##text")).z;
    EXPECT_LE(right, size.x - child()->ScrollbarSizes.x);
    EXPECT_GT(right, size.x - child()->ScrollbarSizes.x - CharacterWidth);
    EXPECT_FALSE(child()->ScrollbarX);
}

TEST_F(ConsoleTextExTest, OnlyVisibleLinesMakeVertices) {
    appendNumbers(20000);
    input.idle(2);
    ImGui::SetScrollY(child(), 100.0f * FontSize);
    input.idle(2);
    const std::vector<DrawnText> texts = drawnTexts("##text");
    /* The one before is cut off by the frame's upper edge */
    EXPECT_EQ(texts[1].text, "100");
    EXPECT_LT(texts.size(), 18);
}

TEST_F(ConsoleTextExTest, ScrollToBottomShowsEnd) {
    appendNumbers(1000);
    input.idle(2);
    EXPECT_EQ(child()->Scroll.y, 0.0f);
    scrollToBottom = true;
    input.idle();
    scrollToBottom = false;
    input.idle();
    EXPECT_EQ(child()->Scroll.y, child()->ScrollMax.y);
    EXPECT_EQ(drawnTexts("##text").back().text, "999");
}

TEST_F(ConsoleTextExTest, LabelIsDrawnRightOfFrame) {
    label = "label";
    input.idle(2);
    const std::vector<DrawnText> texts = drawnTexts("Window");
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts[0].text, "label");
    EXPECT_GE(texts[0].position.x, size.x + ImGui::GetStyle().ItemInnerSpacing.x);
    EXPECT_LT(texts[0].position.x, size.x + ImGui::GetStyle().ItemInnerSpacing.x + 3.0f);
    EXPECT_LT(texts[0].position.y, FramePadding.y + FontSize);
}

TEST_F(ConsoleTextExTest, LoggingGetsText) {
    append("first");
    append("second");
    input.idle(2);
    isLogged = true;
    input.idle();
    EXPECT_NE(logged.find("first"), std::string::npos) << logged;
    EXPECT_NE(logged.find("second"), std::string::npos) << logged;
}

TEST_F(ConsoleTextExTest, LoggingEndsWhereTextEnds) {
    textFollowsLines = false;
    text = std::string("shown\0hidden", 12);
    isLogged = true;
    input.idle(2);
    EXPECT_NE(logged.find("shown"), std::string::npos) << logged;
    EXPECT_EQ(logged.find("hidden"), std::string::npos) << logged;
    activate();
    EXPECT_NE(logged.find("shown"), std::string::npos) << logged;
    EXPECT_EQ(logged.find("hidden"), std::string::npos) << logged;
}

TEST_F(ConsoleTextExTest, SizeIsEightLinesByDefault) {
    size = {0.0f, 0.0f};
    input.idle(2);
    EXPECT_EQ(child()->Size.y, std::floor(8.0f * FontSize + 2.0f * FramePadding.y));
}

TEST_F(ConsoleTextExTest, CollapsedWindowDrawsNothing) {
    append("text");
    frame.run(3, [this] {
        ImGui::SetNextWindowCollapsed(true);
        ImGui::Begin("Collapsed");
        EXPECT_FALSE(ConsoleTextEx(
            "##text", lines, "text", 5, true, true, true, false, false, ImVec2{-1, -1}, 0));
        ImGui::End();
    });
    EXPECT_TRUE(drawnTexts("##text").empty());
}

TEST_F(ConsoleTextExTest, ClippedItemStillTakesItsRoom) {
    append("text");
    ImVec2 before, after;
    frame.run(3, [&] {
        ImGui::SetNextWindowSize(ImVec2{300.0f, 200.0f});
        ImGui::Begin("Clipped");
        ImGui::Dummy(ImVec2{10.0f, 5000.0f});
        before = ImGui::GetCursorPos();
        EXPECT_FALSE(ConsoleTextEx(
            "##text", lines, "text", 5, true, true, true, false, false, ImVec2{100, 77}, 0));
        after = ImGui::GetCursorPos();
        ImGui::End();
    });
    EXPECT_EQ(after.y - before.y, 77.0f + ImGui::GetStyle().ItemSpacing.y);
    EXPECT_TRUE(drawnTexts("##text").empty());
}

/* Text that's neither as long as it's said to be nor UTF-8 */
TEST_F(ConsoleTextExTest, OddSizesAreSafe) {
    frame.run(2, [this] {
        ImGui::Begin("Window");
        for(const int textSize: {-1, -2147483647, 0, 1})
            EXPECT_FALSE(ConsoleTextEx(
                "##odd", lines, "", textSize, true, true, true, false, false, ImVec2{100, 77}, 0));
        ImGui::End();
    });
}

}
