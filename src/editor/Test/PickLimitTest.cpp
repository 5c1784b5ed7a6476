#include "editor/PickLimit.h"

#include <gtest/gtest.h>

#include "QuillmereEditor/Ui.h"

namespace QuillmereEngine { namespace {

TEST(PickLimitTest, PickThatIsNotTakenIsDroppedAtTheEndOfTheNextFrame) {
    Ui ui;
    PickLimit limit;
    ui.pickingId = 7;
    ui.pickedObject = "3";
    limit.frameDrawn(ui);
    EXPECT_STREQ(ui.pickedObject, "3");
    EXPECT_EQ(ui.pickingId, 7);
    limit.frameDrawn(ui);
    EXPECT_EQ(ui.pickedObject, nullptr);
    EXPECT_EQ(ui.pickingId, 0);
}

TEST(PickLimitTest, EachPickHasItsTime) {
    Ui ui;
    PickLimit limit;
    for(const char* const object: {"3", "4"}) {
        ui.pickingId = 7;
        ui.pickedObject = object;
        limit.frameDrawn(ui);
        EXPECT_STREQ(ui.pickedObject, object);
        ui.pickedObject = nullptr;
        limit.frameDrawn(ui);
    }
}

TEST(PickLimitTest, WaitingSelectorMayWaitForever) {
    Ui ui;
    PickLimit limit;
    ui.pickingId = 7;
    for(int i = 0; i != 100; ++i)
        limit.frameDrawn(ui);
    EXPECT_EQ(ui.pickingId, 7);
}

}}
