#include "plugins/history/HistoryRows.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "host/ProjectFile.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;

struct HistoryRowsTest: ::testing::Test {
    void push(const char* const path, const bool merge = false) {
        changes.pushChange(path, rapidjson::Value{++value}, merge);
    }

    std::vector<std::size_t> states(const char* const filter) {
        rows.update(changes, filter);
        std::vector<std::size_t> out;
        for(std::size_t i = 0; i != rows.size(); ++i)
            out.push_back(rows.state(i));
        return out;
    }

    ProjectFile project;
    ChangeManager changes{project};
    HistoryRows rows;
    int value = 0;
};

TEST_F(HistoryRowsTest, AllStatesWithoutAFilter) {
    EXPECT_THAT(states(""), ElementsAre(0));
    push("/a");
    push("/b");
    EXPECT_THAT(states(""), ElementsAre(0, 1, 2));
    EXPECT_EQ(rows.rowOf(0), 0u);
    EXPECT_EQ(rows.rowOf(2), 2u);
}

TEST_F(HistoryRowsTest, FirstStateAndWhatPassesTheFilter) {
    for(const char* const path: {"/a/x", "/b", "/A", "/c"})
        push(path);
    EXPECT_THAT(states("/a"), ElementsAre(0, 1, 3));
    EXPECT_THAT(states("nothing"), ElementsAre(0));
    EXPECT_THAT(states("/C"), ElementsAre(0, 4));
    EXPECT_THAT(states(""), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(HistoryRowsTest, RowOfAStateThatIsNotShownIsTheOneBefore) {
    for(const char* const path: {"/x", "/a", "/x", "/a", "/x"})
        push(path);
    states("a");
    EXPECT_EQ(rows.rowOf(0), 0u);
    EXPECT_EQ(rows.rowOf(1), 0u);
    EXPECT_EQ(rows.rowOf(2), 1u);
    EXPECT_EQ(rows.rowOf(3), 1u);
    EXPECT_EQ(rows.rowOf(5), 2u);
}

TEST_F(HistoryRowsTest, FollowsWhatIsAppended) {
    push("/a");
    EXPECT_THAT(states("a"), ElementsAre(0, 1));
    push("/b");
    push("/a");
    EXPECT_THAT(states("a"), ElementsAre(0, 1, 3));
    EXPECT_THAT(states("a"), ElementsAre(0, 1, 3));
}

TEST_F(HistoryRowsTest, FollowsWhatComesInPlaceOfTheUndone) {
    push("/b");
    push("/a");
    push("/b");
    EXPECT_THAT(states("a"), ElementsAre(0, 2));
    changes.undoLast();
    changes.undoLast();
    push("/b");
    push("/b");
    push("/a");
    /* More than there were, but not the same ones first */
    EXPECT_THAT(states("a"), ElementsAre(0, 4));
}

TEST_F(HistoryRowsTest, FollowsWhatAMergeMoves) {
    push("/b");
    push("/a");
    push("/b");
    EXPECT_THAT(states("a"), ElementsAre(0, 2));
    push("/a", true);
    ASSERT_EQ(changes.changeCount(), 3u);
    EXPECT_THAT(states("a"), ElementsAre(0, 3));
}

TEST_F(HistoryRowsTest, FollowsAReset) {
    push("/a");
    push("/a");
    EXPECT_THAT(states("a"), ElementsAre(0, 1, 2));
    changes.reset(project);
    push("/b");
    push("/b");
    EXPECT_THAT(states("a"), ElementsAre(0));
    EXPECT_THAT(states(""), ElementsAre(0, 1, 2));
}

TEST(PathFilterTest, IsAnyPartInAnyCase) {
    for(const char* const filter: {"", "/Objects/1/naME", "CTS/", "e"})
        EXPECT_TRUE(isPathShown("/objects/1/Name", filter)) << filter;
    for(const char* const filter: {"x", "/name/", "/objects/1/name/", "//"})
        EXPECT_FALSE(isPathShown("/objects/1/Name", filter)) << filter;
    EXPECT_TRUE(isPathShown("", ""));
    EXPECT_FALSE(isPathShown("", "a"));
    EXPECT_TRUE(isPathShown("/\xc3\xa4", "\xc3\xa4"));
}

}}
