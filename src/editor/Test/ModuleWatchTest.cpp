#include "editor/ModuleWatch.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using namespace std::chrono_literals;

ModuleStamp stamp(const std::uint64_t inode, const std::uint64_t size = 100) {
    ModuleStamp out;
    out.library.inode = inode;
    out.library.size = size;
    return out;
}

struct ModuleWatchTest: ::testing::Test {
    ModuleWatch watch;
    ModuleWatch::Clock::time_point start{1h};
};

TEST_F(ModuleWatchTest, FileIsDueOnceItWasLeftAlone) {
    EXPECT_FALSE(watch.isDue(stamp(1), start));
    EXPECT_FALSE(watch.isDue(stamp(1), start + ModuleWatch::SettleTime - 1ms));
    EXPECT_TRUE(watch.isDue(stamp(1), start + ModuleWatch::SettleTime));
}

TEST_F(ModuleWatchTest, EveryChangeStartsTheWaitAnew) {
    for(std::uint64_t size = 0; size != 100; ++size)
        EXPECT_FALSE(watch.isDue(stamp(1, size), start + size * 1s));
    EXPECT_TRUE(watch.isDue(stamp(1, 99), start + 99s + ModuleWatch::SettleTime));
}

TEST_F(ModuleWatchTest, HandledFileIsNotDueUntilItChanges) {
    watch.setHandled(stamp(1));
    EXPECT_FALSE(watch.isDue(stamp(1), start));
    EXPECT_FALSE(watch.isDue(stamp(1), start + 1h));
    EXPECT_FALSE(watch.isDue(stamp(2), start + 1h));
    EXPECT_TRUE(watch.isDue(stamp(2), start + 2h));
}

TEST_F(ModuleWatchTest, ChangeOfTheMetadataCounts) {
    watch.setHandled(stamp(1));
    ModuleStamp changed = stamp(1);
    changed.metadata.seconds = 7;
    watch.isDue(changed, start);
    EXPECT_TRUE(watch.isDue(changed, start + 1s));
}

TEST_F(ModuleWatchTest, MissingFileIsNeverDue) {
    watch.setHandled(stamp(1));
    EXPECT_FALSE(watch.isDue({}, start));
    EXPECT_FALSE(watch.isDue({}, start + 1h));
}

TEST_F(ModuleWatchTest, PostponedFileIsDueAfterAPauseOrAChange) {
    watch.isDue(stamp(1), start);
    const auto later = start + 1s;
    EXPECT_TRUE(watch.isDue(stamp(1), later));
    watch.postpone(later);
    EXPECT_FALSE(watch.isDue(stamp(1), later + ModuleWatch::RetryTime - 1ms));
    EXPECT_TRUE(watch.isDue(stamp(1), later + ModuleWatch::RetryTime));

    watch.postpone(later);
    EXPECT_FALSE(watch.isDue(stamp(2), later + 1ms));
    EXPECT_TRUE(watch.isDue(stamp(2), later + 1ms + ModuleWatch::SettleTime));
}

}}
