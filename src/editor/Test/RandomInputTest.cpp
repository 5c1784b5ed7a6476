#include "editor/Test/randomInput.h"

#include <set>

#include <gtest/gtest.h>

#include "editor/InputReplay.h"

namespace QuillmereEngine { namespace {

using Kind = ReplayEvent::Kind;

constexpr WorkArea Area{640, 480};

TEST(RandomInputTest, SeedDecidesAll) {
    EXPECT_EQ(randomInput(1, 500, Area), randomInput(1, 500, Area));
    EXPECT_NE(randomInput(1, 500, Area), randomInput(2, 500, Area));
    /* Of an engine that's the same everywhere */
    const std::string begin = randomInput(1, 500, Area);
    EXPECT_EQ(begin.substr(0, begin.find('\n')), "frame 0 move 542 420");
}

TEST(RandomInputTest, CanBeReplayedAndHasEverything) {
    const auto events = parseReplay(randomInput(3, 3000, Area), "random");
    ASSERT_TRUE(events);
    std::set<Kind> kinds;
    std::set<int> buttons;
    for(const ReplayEvent& event: *events) {
        kinds.insert(event.kind);
        if(event.kind == Kind::ButtonDown)
            buttons.insert(event.code);
        if(event.kind == Kind::Move) {
            EXPECT_TRUE(event.x >= 0.0f && event.x < 640.0f) << event.x;
            EXPECT_TRUE(event.y >= 0.0f && event.y < 480.0f) << event.y;
        }
    }
    EXPECT_EQ(kinds.size(), 7u);
    EXPECT_EQ(buttons, (std::set<int>{0, 1, 2}));
    EXPECT_GE(events->back().frame, 2990u);
    EXPECT_LT(events->back().frame, 3200u);
}

TEST(RandomInputTest, NothingStaysDown) {
    for(const std::uint32_t seed: {1, 2, 3}) {
        const auto events = parseReplay(randomInput(seed, 1000, Area), "random");
        ASSERT_TRUE(events);
        std::multiset<int> buttons, keys;
        for(const ReplayEvent& event: *events) {
            if(event.kind == Kind::ButtonDown)
                buttons.insert(event.code);
            else if(event.kind == Kind::ButtonUp)
                buttons.erase(event.code);
            else if(event.kind == Kind::KeyDown)
                keys.insert(event.code);
            else if(event.kind == Kind::KeyUp)
                keys.erase(event.code);
        }
        EXPECT_TRUE(buttons.empty());
        EXPECT_TRUE(keys.empty());
    }
}

}}
