#include "editor/StatusBar.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

TEST(StatusBarTest, CountsLinesInGroups) {
    EXPECT_EQ(lineCountText(0), "0 lines");
    EXPECT_EQ(lineCountText(1), "1 line");
    EXPECT_EQ(lineCountText(999), "999 lines");
    EXPECT_EQ(lineCountText(1000), "1,000 lines");
    EXPECT_EQ(lineCountText(12345678), "12,345,678 lines");
}

TEST(StatusBarTest, TellsHowFarAFileWasRead) {
    EXPECT_EQ(feedText({"a.log", 0, 200, false}), "Reading a.log: 0 %");
    EXPECT_EQ(feedText({"a.log", 99, 200, false}), "Reading a.log: 49 %");
    EXPECT_EQ(feedText({"a.log", 300, 200, false}), "Reading a.log: 100 %");
    EXPECT_EQ(feedText({"a.log", 200, 200, true}), "");
}

TEST(StatusBarTest, PipeHasNoEnd) {
    EXPECT_EQ(
        feedText({"standard input", 1'234'567, 0, false}), "Following standard input: 1.2 MB");
}

TEST(StatusBarTest, NamesOpenModulesInLines) {
    EXPECT_EQ(loadedModulesText({}), "No modules");
    EXPECT_EQ(loadedModulesText({"A (Debug build)", "B"}), "Modules:\nA (Debug build)\nB");
}

TEST(StatusBarTest, NamesModulesThatFailed) {
    EXPECT_EQ(failedModulesText({}), "");
    EXPECT_EQ(failedModulesText({"A"}), "Not loaded: A");
    EXPECT_EQ(failedModulesText({"A", "B"}), "Not loaded: A, B");
}

}}
