#include "editor/InputReplay.h"

#include <sstream>

#include <Corrade/Utility/Debug.h>
#include <GLFW/glfw3.h>
#include <gtest/gtest.h>
#include <imgui.h>

using namespace Corrade;

namespace QuillmereEngine { namespace {

using Kind = ReplayEvent::Kind;

std::vector<ReplayEvent> events(const char* const text) {
    return parseReplay(text, "input").value_or(std::vector<ReplayEvent>{});
}

TEST(ParseReplayTest, ReadsEveryKindOfEvent) {
    const std::vector<ReplayEvent> out = events(R"(# comment
frame 0 move 10 20.5

frame 1 down left
frame 2 up right
  frame 3   wheel   -2
frame 4 key Ctrl down
frame 5 key f12 up
frame 6 text  a b)");
    ASSERT_EQ(out.size(), 7u);
    EXPECT_EQ(out[0].kind, Kind::Move);
    EXPECT_EQ(out[0].x, 10.0f);
    EXPECT_EQ(out[0].y, 20.5f);
    EXPECT_EQ(out[1].kind, Kind::ButtonDown);
    EXPECT_EQ(out[1].code, 0);
    EXPECT_EQ(out[2].kind, Kind::ButtonUp);
    EXPECT_EQ(out[2].code, 1);
    EXPECT_EQ(out[3].kind, Kind::Wheel);
    EXPECT_EQ(out[3].y, -2.0f);
    EXPECT_EQ(out[4].kind, Kind::KeyDown);
    EXPECT_EQ(out[4].code, GLFW_KEY_LEFT_CONTROL);
    EXPECT_EQ(out[5].kind, Kind::KeyUp);
    EXPECT_EQ(out[5].code, GLFW_KEY_F12);
    EXPECT_EQ(out[6].kind, Kind::Text);
    EXPECT_EQ(out[6].text, " a b");
}

TEST(ParseReplayTest, SortsByFrameAndKeepsTheOrderWithinOne) {
    const std::vector<ReplayEvent> out = events(
        "frame 5 wheel 1\r\nframe 2 wheel 2\r\nframe 5 wheel 3\r\n");
    ASSERT_EQ(out.size(), 3u);
    EXPECT_EQ(out[0].y, 2.0f);
    EXPECT_EQ(out[1].y, 1.0f);
    EXPECT_EQ(out[2].y, 3.0f);
}

TEST(ParseReplayTest, LettersAndDigitsAreKeys) {
    EXPECT_EQ(events("frame 0 key A down")[0].code, GLFW_KEY_A);
    EXPECT_EQ(events("frame 0 key z down")[0].code, GLFW_KEY_Z);
    EXPECT_EQ(events("frame 0 key 7 down")[0].code, GLFW_KEY_7);
}

struct BadReplay {
    const char* name;
    const char* text;
    const char* message;
};

struct BadReplayTest: ::testing::TestWithParam<BadReplay> {};

TEST_P(BadReplayTest, NamesFileAndLine) {
    std::ostringstream out;
    {
        Utility::Error redirectError{&out};
        EXPECT_FALSE(parseReplay(GetParam().text, "input"));
    }
    EXPECT_EQ(out.str(), std::string{"quillmere-editor: input:"} + GetParam().message + "\n");
}

const BadReplay BadReplays[]{
    {"NoFrame", "move 1 2", "1: expected frame but got move"},
    {"LaterLine", "# x\n\nframe 1 wheel 1\nframe", "4: expected a frame number but the line ends"},
    {"NegativeFrame", "frame -1 wheel 1", "1: expected a frame number but got -1"},
    {"NoKind", "frame 1", "1: expected move, down, up, wheel, key or text but the line ends"},
    {"UnknownKind", "frame 1 jump", "1: expected move, down, up, wheel, key or text but got jump"},
    {"NoNumber", "frame 1 move 1 y", "1: expected a number but got y"},
    {"MissingNumber", "frame 1 move 1", "1: expected a number but the line ends"},
    {"InfiniteNumber", "frame 1 wheel inf", "1: expected a number but got inf"},
    {"UnknownButton", "frame 1 down 3", "1: expected left, right or middle but got 3"},
    {"UnknownKey", "frame 1 key hyper down", "1: expected a key but got hyper"},
    {"GreatFunctionKey", "frame 1 key f13 down", "1: expected a key but got f13"},
    {"HugeFunctionKey", "frame 1 key f99999999999 down", "1: expected a key but got f99999999999"},
    {"KeyWithoutState", "frame 1 key a", "1: expected down or up but the line ends"},
    {"KeyWithOtherState", "frame 1 key a held", "1: expected down or up but got held"},
    {"NoText", "frame 1 text", "1: expected a text but the line ends"},
    {"Rest", "frame 1 wheel 1 2", "1: expected the line to end but got 2"},
};

INSTANTIATE_TEST_SUITE_P(All, BadReplayTest, ::testing::ValuesIn(BadReplays),
    [](const auto& row) { return row.param.name; });

struct InputReplayTest: ::testing::Test {
    ~InputReplayTest() override { ImGui::DestroyContext(context); }

    ImGuiContext* context = ImGui::CreateContext();
    ImGuiIO& io = ImGui::GetIO();
    PanelEvents panelEvents;
};

TEST_F(InputReplayTest, MovesAndPressesTheMouse) {
    InputReplay replay{events("frame 0 move 3 4\nframe 1 down left\nframe 1 wheel -1")};
    replay.apply(0, io, panelEvents);
    EXPECT_EQ(io.MousePos.x, 3.0f);
    EXPECT_EQ(io.MousePos.y, 4.0f);
    EXPECT_FALSE(io.MouseDown[0]);
    replay.apply(1, io, panelEvents);
    EXPECT_TRUE(io.MouseDown[0]);
    EXPECT_EQ(io.MouseWheel, -1.0f);
    EXPECT_TRUE(replay.isFinished());

    ASSERT_EQ(panelEvents.size(), 3u);
    EXPECT_EQ(std::get<MouseMoveEvent>(panelEvents[0]).x, 3.0f);
    EXPECT_EQ(std::get<MousePress>(panelEvents[1]).event.y, 4.0f);
    EXPECT_EQ(std::get<MouseScrollEvent>(panelEvents[2]).offsetY, -1.0f);
}

/* A real mouse that a back end reads every frame must not win */
TEST_F(InputReplayTest, HoldsTheMouseInLaterFrames) {
    InputReplay replay{events("frame 0 move 3 4\nframe 0 down right")};
    replay.apply(0, io, panelEvents);
    io.MousePos = {100.0f, 100.0f};
    io.MouseDown[1] = false;
    replay.apply(1, io, panelEvents);
    EXPECT_EQ(io.MousePos.x, 3.0f);
    EXPECT_TRUE(io.MouseDown[1]);
}

/* Clicks in the window used to be lost */
TEST_F(InputReplayTest, WithoutEventsTheInputIsTheUsers) {
    InputReplay replay{{}};
    io.MousePos = {100.0f, 100.0f};
    io.MouseDown[0] = true;
    io.KeyCtrl = true;
    replay.apply(0, io, panelEvents);
    EXPECT_EQ(io.MousePos.x, 100.0f);
    EXPECT_TRUE(io.MouseDown[0]);
    EXPECT_TRUE(io.KeyCtrl);
}

TEST_F(InputReplayTest, ReleaseInTheFrameOfThePressWaitsAFrame) {
    InputReplay replay{events("frame 0 down left\nframe 0 up left\nframe 0 wheel 1")};
    replay.apply(0, io, panelEvents);
    EXPECT_TRUE(io.MouseDown[0]);
    EXPECT_EQ(io.MouseWheel, 0.0f);
    EXPECT_FALSE(replay.isFinished());
    replay.apply(1, io, panelEvents);
    EXPECT_FALSE(io.MouseDown[0]);
    EXPECT_EQ(io.MouseWheel, 1.0f);
    EXPECT_TRUE(replay.isFinished());
}

TEST_F(InputReplayTest, ModifiersAreHeldWithTheirKeys) {
    InputReplay replay{events("frame 0 key ctrl down\nframe 0 key c down\n"
                              "frame 1 key c up\nframe 2 key ctrl up")};
    replay.apply(0, io, panelEvents);
    EXPECT_TRUE(io.KeyCtrl);
    EXPECT_TRUE(io.KeysDown[GLFW_KEY_C]);
    replay.apply(1, io, panelEvents);
    EXPECT_TRUE(io.KeyCtrl);
    EXPECT_FALSE(io.KeysDown[GLFW_KEY_C]);
    replay.apply(2, io, panelEvents);
    EXPECT_FALSE(io.KeyCtrl);

    ASSERT_EQ(panelEvents.size(), 4u);
    EXPECT_EQ(std::get<KeyPress>(panelEvents[1]).event.modifiers, unsigned(ModifierCtrl));
    EXPECT_EQ(std::get<KeyRelease>(panelEvents[3]).event.key, GLFW_KEY_LEFT_CONTROL);
}

TEST_F(InputReplayTest, TextBecomesCharacters) {
    InputReplay replay{events("frame 0 text h\xc3\xa9")};
    replay.apply(0, io, panelEvents);
    ASSERT_EQ(io.InputQueueCharacters.Size, 2);
    EXPECT_EQ(io.InputQueueCharacters[1], ImWchar(0xe9));
}

}}
