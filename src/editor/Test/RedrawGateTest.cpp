#include "editor/RedrawGate.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using namespace std::chrono_literals;

struct RedrawGateTest: ::testing::Test {
    /* Draws until the gate is content, gives how many frames that took */
    int settle(const std::size_t look) {
        int frames = 0;
        for(; gate.isDue(now); ++frames)
            gate.drawn(now, now, look);
        return frames;
    }

    RedrawGate gate;
    RedrawGate::Clock::time_point now{1h};
};

TEST_F(RedrawGateTest, DrawsSomeFramesAtTheStartAndThenRests) {
    EXPECT_EQ(settle(7), RedrawGate::LeastFrames);
    EXPECT_FALSE(gate.isDue(now + 1h));
    EXPECT_EQ(gate.pause(now, 250ms), 250ms);
}

TEST_F(RedrawGateTest, InputIsAnsweredAtOnce) {
    settle(7);
    gate.request();
    EXPECT_TRUE(gate.isDue(now));
    EXPECT_EQ(gate.pause(now, 250ms), 0ms);
    EXPECT_EQ(settle(7), RedrawGate::LeastFrames);
}

TEST_F(RedrawGateTest, GoesOnWhileThePictureChanges) {
    settle(7);
    gate.request();
    for(std::size_t look = 100; look != 120; ++look) {
        EXPECT_TRUE(gate.isDue(now));
        gate.drawn(now, now, look);
    }
    gate.drawn(now, now, 119);
    EXPECT_FALSE(gate.isDue(now));
}

TEST_F(RedrawGateTest, NewLinesWaitForTheirInterval) {
    settle(7);
    gate.requestForLines();
    EXPECT_FALSE(gate.isDue(now));
    EXPECT_EQ(gate.pause(now, 250ms), RedrawGate::LineInterval);
    EXPECT_EQ(gate.pause(now, 10ms), 10ms);
    EXPECT_TRUE(gate.isDue(now + RedrawGate::LineInterval));
}

TEST_F(RedrawGateTest, TextCursorBlinksOn) {
    settle(7);
    gate.setTextFocus(RedrawGate::TextFocus::Yes);
    for(std::size_t look = 0; look != 100; ++look) {
        EXPECT_FALSE(gate.isDue(now));
        EXPECT_EQ(gate.pause(now, 250ms), RedrawGate::CursorInterval);
        now += RedrawGate::CursorInterval;
        ASSERT_TRUE(gate.isDue(now));
        gate.drawn(now, now, look / 3 % 2);
        settle(look / 3 % 2);
    }
    gate.setTextFocus(RedrawGate::TextFocus::No);
    EXPECT_FALSE(gate.isDue(now + 1h));
}

/* The console takes the focus to be copied from and shows no cursor */
TEST_F(RedrawGateTest, FocusWithoutACursorComesToRest) {
    settle(7);
    gate.setTextFocus(RedrawGate::TextFocus::Yes);
    int frames = 0;
    for(; gate.isDue(now += RedrawGate::CursorInterval); ++frames)
        gate.drawn(now, now, 7);
    EXPECT_LE(frames, RedrawGate::StillFrames);
    gate.request();
    EXPECT_TRUE(gate.isDue(now));
}

TEST_F(RedrawGateTest, SlowFramesTakeHalfOfTheTimeForLines) {
    settle(7);
    gate.requestForLines();
    gate.drawn(now, now + 500ms, 7);
    gate.requestForLines();
    EXPECT_FALSE(gate.isDue(now + 999ms));
    EXPECT_TRUE(gate.isDue(now + 1000ms));
}

}}
