#include "editor/InputHistory.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

TEST(InputHistoryTest, EmptyOneHasNothing) {
    InputHistory history;
    EXPECT_EQ(history.earlier("typed"), std::nullopt);
    EXPECT_EQ(history.later(), std::nullopt);
}

TEST(InputHistoryTest, LinesComeNewestFirstAndBack) {
    InputHistory history;
    history.add("1");
    history.add("2");
    EXPECT_EQ(history.earlier(""), "2");
    EXPECT_EQ(history.earlier("2"), "1");
    EXPECT_EQ(history.earlier("1"), std::nullopt);
    EXPECT_EQ(history.later(), "2");
}

TEST(InputHistoryTest, TypedTextIsKept) {
    InputHistory history;
    history.add("1");
    EXPECT_EQ(history.earlier("typed"), "1");
    EXPECT_EQ(history.later(), "typed");
    EXPECT_EQ(history.later(), std::nullopt);
    EXPECT_EQ(history.earlier("typed again"), "1");
    EXPECT_EQ(history.later(), "typed again");
}

TEST(InputHistoryTest, EnteringStartsFromTheEnd) {
    InputHistory history;
    history.add("1");
    history.add("2");
    history.earlier("typed");
    history.earlier("2");
    history.add("1");
    EXPECT_EQ(history.later(), std::nullopt);
    EXPECT_EQ(history.earlier(""), "1");
    EXPECT_EQ(history.earlier("1"), "2");
    EXPECT_EQ(history.later(), "1");
    EXPECT_EQ(history.later(), "");
}

TEST(InputHistoryTest, RepeatedLineIsKeptOnce) {
    InputHistory history;
    history.add("1");
    history.add("1");
    EXPECT_EQ(history.earlier(""), "1");
    EXPECT_EQ(history.earlier("1"), std::nullopt);
}

TEST(InputHistoryTest, OldestLinesGo) {
    InputHistory history;
    for(std::size_t i = 0; i <= InputHistory::MaxLines; ++i)
        history.add(std::to_string(i));
    std::string last;
    std::size_t count = 0;
    while(const std::optional<std::string> line = history.earlier("")) {
        last = *line;
        ++count;
    }
    EXPECT_EQ(count, InputHistory::MaxLines);
    EXPECT_EQ(last, "1");
}

}}
