#include <cstring>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "common/StringArrayView.h"
#include "plugins/console/ConsoleTextEx.h"
#include "plugins/console/Test/ConsolePanel.h"
#include "plugins/console/Test/plainConsoleText.h"
#include "plugins/console/shownText.h"
#include "testing/HeadlessFrame.h"
#include "testing/InputDriver.h"

/* Plays the same random user in front of ConsoleTextEx() and of an implementation of it that takes
   no shortcuts, and expects that not a vertex and not a field differs in any frame. */

using namespace Corrade;
using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

using Widget = bool (*)(const char*, StringArrayView, const char*, int, bool, bool, bool, bool,
    bool, const ImVec2&, int);

class Random {
public:
    explicit Random(const unsigned seed): _engine{seed} {}

    int below(const int end) { return int(_engine() % unsigned(end)); }
    bool oneIn(const int count) { return below(count) == 0; }

private:
    std::mt19937 _engine;
};

/* What's shown, the same for both */
struct Scene {
    StringArray lines;
    std::string text;
    int textSize = 1;
    ShownLevels levels{true, true, true};
    bool filtersChanged = false;
    bool scrollToBottom = false;
    ImVec2 position{20.0f, 30.0f};
    ImVec2 size{-1.0f, -30.0f};
    float fontScale = 1.0f;
    int flags = 0;
    const char* label = "##text";

    void draw(Widget widget, char* otherText, std::size_t otherTextSize) const;
};

void Scene::draw(
    const Widget widget, char* const otherText, const std::size_t otherTextSize) const {
    ImGui::SetNextWindowPos(position);
    ImGui::SetNextWindowSize(ImVec2{500.0f, 300.0f});
    ImGui::Begin("Window", nullptr, ImGuiWindowFlags_NoMove);
    ImGui::SetWindowFontScale(fontScale);
    widget(label, lines, text.data(), textSize, levels.info, levels.warnings, levels.errors,
        filtersChanged, scrollToBottom, size, flags);
    ImGui::InputText("other", otherText, otherTextSize);
    ImGui::End();
}

/* Pieces that are short, cut off, not UTF-8, above U+FFFF, or something to the layout */
std::string randomPiece(Random& random) {
    constexpr const char* Pieces[]{"a", " ", "word ", "longer words, and more of them ", "\t", "\r",
        "\xc3\xa4", "\xe2\x82\xac", "\xf0\x9f\x98\x80", "\xff", "\xe2\x82", "\xf0\x9f", "\xc0\x80",
        "iiiiiiiiiiiiiiii", "WWWWWWWWWWWWWWWW", "\x01"};
    return Pieces[random.below(int(std::size(Pieces)))];
}

std::string randomLine(Random& random) {
    constexpr const char* Tags[]{"[error]", "[warn]", "[info]", "[verbose]", "", "[erro", "[warn"};
    std::string line;
    if(!random.oneIn(4))
        line = std::string("[2024-03-07 09:05:02.045]") + Tags[random.below(int(std::size(Tags)))];
    for(int i = random.below(random.oneIn(20) ? 200 : 12); i; --i)
        line += randomPiece(random);
    if(random.oneIn(30))
        line.insert(std::size_t(random.below(int(line.size()) + 1)),
            std::string(std::size_t(1 + random.below(40)), '\n'));
    return line;
}

void changeLines(Scene& scene, Random& random) {
    if(random.oneIn(12))
        scene.lines.clear();
    for(int i = random.below(random.oneIn(8) ? 1500 : 20); i; --i)
        scene.lines.append(randomLine(random).c_str(), -1);
}

void updateText(Scene& scene, Random& random) {
    const Containers::Array<char> joined = shownText(scene.lines, scene.levels);
    scene.text = joined.isEmpty() ? "" : std::string{joined.data(), joined.size() - 1};
    if(random.oneIn(40)) {
        scene.text.clear();
        for(int i = random.below(50); i; --i)
            scene.text += random.oneIn(6) ? "\n" : randomPiece(random);
    }
    /* With the NUL, without it, or with room behind it */
    scene.textSize = int(scene.text.size()) + 1 - (random.oneIn(4) ? 1 : 0);
    if(random.oneIn(4)) {
        scene.text.append(std::size_t(random.below(100)) + 1, '\0');
        scene.textSize = int(scene.text.size());
    }
}

void changeScene(Scene& scene, Random& random) {
    scene.filtersChanged = false;
    scene.scrollToBottom = random.oneIn(20);
    if(random.oneIn(10)) {
        scene.levels = {!random.oneIn(3), !random.oneIn(3), !random.oneIn(3)};
        scene.filtersChanged = !random.oneIn(3);
    }
    if(random.oneIn(6))
        changeLines(scene, random);
    if(random.oneIn(60))
        scene.fontScale = random.oneIn(2) ? 1.0f : 0.5f + float(random.below(200)) / 100.0f;
    if(random.oneIn(60))
        scene.position = {float(random.below(400)) / 3.0f, float(random.below(400)) / 3.0f};
    if(random.oneIn(60))
        scene.size = {-1.0f - float(random.below(100)), -30.0f - float(random.below(300)) / 2.0f};
    if(random.oneIn(40)) {
        constexpr int Flags[]{0, ImGuiInputTextFlags_AlwaysOverwrite,
            ImGuiInputTextFlags_AllowTabInput, ImGuiInputTextFlags_NoHorizontalScroll};
        scene.flags = Flags[random.below(4)];
    }
    updateText(scene, random);
}

void changeKeys(ImGuiIO& io, Random& random) {
    constexpr ImGuiKey Keys[]{ImGuiKey_LeftArrow, ImGuiKey_RightArrow, ImGuiKey_UpArrow,
        ImGuiKey_DownArrow, ImGuiKey_Home, ImGuiKey_End, ImGuiKey_A, ImGuiKey_C, ImGuiKey_Insert,
        ImGuiKey_Escape, ImGuiKey_Delete, ImGuiKey_Tab, ImGuiKey_PageDown};
    for(const ImGuiKey key: Keys)
        io.KeysDown[key] = random.oneIn(key == ImGuiKey_Escape || key == ImGuiKey_Tab ? 200 : 12);
    if(random.oneIn(5)) {
        io.KeyCtrl = random.oneIn(3);
        io.KeyShift = random.oneIn(2);
        io.KeyAlt = random.oneIn(6);
        io.KeySuper = random.oneIn(4);
    }
}

void changeInput(ImGuiIO& io, Random& random) {
    if(random.oneIn(3))
        io.MousePos = {float(random.below(560)), float(random.below(400))};
    if(random.oneIn(40))
        io.MousePos = {-FLT_MAX, -FLT_MAX};
    if(random.oneIn(4))
        io.MouseDown[0] = !io.MouseDown[0];
    io.MouseWheel = random.oneIn(15) ? float(random.below(11) - 5) : 0.0f;
    if(random.oneIn(100))
        io.ConfigMacOSXBehaviors = !io.ConfigMacOSXBehaviors;
    changeKeys(io, random);
}

/* One of the two */
struct Player {
    explicit Player(const Widget playedWidget): widget{playedWidget} {
        frame.io().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    }

    void step(const Scene& scene, Random random) {
        changeInput(frame.io(), random);
        frame.run([&] { scene.draw(widget, otherText, sizeof(otherText)); });
    }

    HeadlessFrame frame;
    Widget widget;
    char otherText[64]{"other"};
};

template<class T> bool isEqual(const ImVector<T>& a, const ImVector<T>& b) {
    return a.Size == b.Size &&
        (!a.Size || std::memcmp(a.Data, b.Data, std::size_t(a.Size) * sizeof(T)) == 0);
}

void expectEqualCommands(const ImDrawList& a, const ImDrawList& b) {
    ASSERT_EQ(a.CmdBuffer.Size, b.CmdBuffer.Size);
    for(int i = 0; i != a.CmdBuffer.Size; ++i) {
        ASSERT_EQ(a.CmdBuffer[i].ElemCount, b.CmdBuffer[i].ElemCount);
        ASSERT_EQ(a.CmdBuffer[i].VtxOffset, b.CmdBuffer[i].VtxOffset);
        ASSERT_EQ(
            std::memcmp(&a.CmdBuffer[i].ClipRect, &b.CmdBuffer[i].ClipRect, sizeof(ImVec4)), 0);
    }
}

void expectEqualVertices(const ImVector<ImDrawVert>& a, const ImVector<ImDrawVert>& b) {
    for(int i = 0; i < a.Size && i < b.Size; ++i) {
        SCOPED_TRACE("vertex " + std::to_string(i));
        ASSERT_EQ(a[i].pos.x, b[i].pos.x);
        ASSERT_EQ(a[i].pos.y, b[i].pos.y);
        ASSERT_EQ(a[i].uv.x, b[i].uv.x);
        ASSERT_EQ(a[i].uv.y, b[i].uv.y);
        ASSERT_EQ(a[i].col, b[i].col);
    }
    ASSERT_EQ(a.Size, b.Size);
}

void expectEqualDrawing(const ImDrawData& a, const ImDrawData& b) {
    ASSERT_EQ(a.CmdListsCount, b.CmdListsCount);
    for(int i = 0; i != a.CmdListsCount; ++i) {
        SCOPED_TRACE(a.CmdLists[i]->_OwnerName);
        expectEqualVertices(a.CmdLists[i]->VtxBuffer, b.CmdLists[i]->VtxBuffer);
        if(testing::Test::HasFatalFailure())
            return;
        ASSERT_TRUE(isEqual(a.CmdLists[i]->IdxBuffer, b.CmdLists[i]->IdxBuffer));
        expectEqualCommands(*a.CmdLists[i], *b.CmdLists[i]);
    }
}

void expectEqualTextEdit(const ImStb::STB_TexteditState& a, const ImStb::STB_TexteditState& b) {
    EXPECT_EQ(a.cursor, b.cursor);
    EXPECT_EQ(a.select_start, b.select_start);
    EXPECT_EQ(a.select_end, b.select_end);
    EXPECT_EQ(a.insert_mode, b.insert_mode);
    EXPECT_EQ(a.row_count_per_page, b.row_count_per_page);
    EXPECT_EQ(a.cursor_at_end_of_line, b.cursor_at_end_of_line);
    EXPECT_EQ(a.initialized, b.initialized);
    EXPECT_EQ(a.has_preferred_x, b.has_preferred_x);
    EXPECT_EQ(a.single_line, b.single_line);
    EXPECT_EQ(a.preferred_x, b.preferred_x);
    EXPECT_EQ(a.undostate.undo_point, b.undostate.undo_point);
    EXPECT_EQ(a.undostate.redo_point, b.undostate.redo_point);
    EXPECT_EQ(a.undostate.undo_char_point, b.undostate.undo_char_point);
    EXPECT_EQ(a.undostate.redo_char_point, b.undostate.redo_char_point);
}

void expectEqualState(const ImGuiInputTextState& a, const ImGuiInputTextState& b) {
    EXPECT_EQ(a.ID, b.ID);
    ASSERT_EQ(a.CurLenW, b.CurLenW);
    EXPECT_EQ(a.CurLenA, b.CurLenA);
    ASSERT_EQ(a.TextW.Size, b.TextW.Size);
    if(a.TextW.Size) {
        EXPECT_EQ(
            std::memcmp(a.TextW.Data, b.TextW.Data, std::size_t(a.CurLenW + 1) * sizeof(ImWchar)),
            0);
    }
    EXPECT_TRUE(isEqual(a.InitialTextA, b.InitialTextA));
    EXPECT_EQ(a.TextA.Size, b.TextA.Size);
    EXPECT_EQ(a.TextAIsValid, b.TextAIsValid);
    EXPECT_EQ(a.BufCapacityA, b.BufCapacityA);
    EXPECT_EQ(a.ScrollX, b.ScrollX);
    EXPECT_EQ(a.CursorAnim, b.CursorAnim);
    EXPECT_EQ(a.CursorFollow, b.CursorFollow);
    EXPECT_EQ(a.SelectedAllMouseLock, b.SelectedAllMouseLock);
    EXPECT_EQ(a.Flags, b.Flags);
    expectEqualTextEdit(a.Stb, b.Stb);
}

void expectEqualContexts(const ImGuiContext& a, const ImGuiContext& b) {
    EXPECT_EQ(a.ActiveId, b.ActiveId);
    EXPECT_EQ(a.HoveredId, b.HoveredId);
    EXPECT_EQ(a.NavId, b.NavId);
    EXPECT_EQ(a.MouseCursor, b.MouseCursor);
    EXPECT_EQ(a.ActiveIdAllowOverlap, b.ActiveIdAllowOverlap);
    EXPECT_EQ(a.ActiveIdUsingNavDirMask, b.ActiveIdUsingNavDirMask);
    EXPECT_EQ(a.ActiveIdUsingNavInputMask, b.ActiveIdUsingNavInputMask);
    EXPECT_EQ(a.ActiveIdUsingKeyInputMask, b.ActiveIdUsingKeyInputMask);
    EXPECT_EQ(a.WantTextInputNextFrame, b.WantTextInputNextFrame);
    ASSERT_EQ(a.Windows.Size, b.Windows.Size);
    for(int i = 0; i != a.Windows.Size; ++i) {
        EXPECT_EQ(a.Windows[i]->Scroll.y, b.Windows[i]->Scroll.y);
        EXPECT_EQ(a.Windows[i]->ScrollMax.y, b.Windows[i]->ScrollMax.y);
    }
    expectEqualState(a.InputTextState, b.InputTextState);
}

void expectEqual(const Player& real, const Player& plain) {
    const ImGuiContext& a = *real.frame.context();
    const ImGuiContext& b = *plain.frame.context();
    EXPECT_EQ(real.frame.clipboard, plain.frame.clipboard);
    EXPECT_STREQ(real.otherText, plain.otherText);
    expectEqualContexts(a, b);
    real.frame.io();
    const ImDrawData& drawn = *ImGui::GetDrawData();
    plain.frame.io();
    expectEqualDrawing(drawn, *ImGui::GetDrawData());
}

class ConsoleTextComparisonTest: public testing::TestWithParam<unsigned> {};

TEST_P(ConsoleTextComparisonTest, DrawsAndEditsAsThePlainOne) {
    Random random{GetParam()};
    Scene scene;
    Player real{ConsoleTextEx};
    Player plain{plainConsoleText};
    changeLines(scene, random);
    int selectedFrames = 0;
    for(int i = 0; i != 600; ++i) {
        SCOPED_TRACE("frame " + std::to_string(i));
        changeScene(scene, random);
        const Random input{unsigned(random.below(1 << 30))};
        real.step(scene, input);
        plain.step(scene, input);
        expectEqual(real, plain);
        if(HasFailure())
            return;
        selectedFrames += real.frame.context()->InputTextState.HasSelection();
    }
    /* Otherwise the user did nothing worth a comparison */
    EXPECT_GT(selectedFrames, 10);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ConsoleTextComparisonTest, testing::Range(1u, 25u));

}
