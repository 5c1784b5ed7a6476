#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/console/VisibleLines.h"

using namespace QuillmereEngine;

namespace {

constexpr ShownLevels All{true, true, true};

std::string tagged(const std::string& tag, const std::size_t size = 40) {
    std::string out = "[2024-03-07 09:05:02.045][" + tag + "]";
    out.resize(size, '.');
    return out;
}

/* Index and row of each line visited */
using Visits = std::vector<std::pair<std::size_t, std::size_t>>;

Visits visits(const StringArrayView& lines, const ShownLevels levels, const std::size_t first,
    const std::size_t end) {
    Visits out;
    for(VisibleLines line{lines, levels, first, end}; line.next();)
        out.emplace_back(line.index(), line.row());
    return out;
}

TEST(VisibleLinesTest, NoLinesNoVisits) { EXPECT_TRUE(visits(StringArray{}, All, 0, 100).empty()); }

TEST(VisibleLinesTest, EachShownLineTakesARow) {
    StringArray lines;
    for(const char* const tag: {"info", "error", "verbose", "warn", "error"})
        lines.append(tagged(tag).c_str(), -1);
    EXPECT_EQ(visits(lines, All, 0, 9), (Visits{{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}}));
    EXPECT_EQ(visits(lines, {false, true, true}, 0, 9), (Visits{{0, 0}, {2, 1}, {3, 2}}));
    EXPECT_EQ(visits(lines, {true, true, false}, 0, 9), (Visits{{1, 0}, {3, 1}, {4, 2}}));
    EXPECT_TRUE(visits(lines, {false, false, false}, 0, 9).empty());
}

TEST(VisibleLinesTest, LevelIsThatOfTheTag) {
    StringArray lines;
    for(const char* const tag: {"info", "error", "verbose", "warn"})
        lines.append(tagged(tag).c_str(), -1);
    std::vector<LineLevel> levels;
    for(VisibleLines line{lines, All, 0, 9}; line.next();)
        levels.push_back(line.level());
    EXPECT_EQ(levels,
        (std::vector<LineLevel>{
            LineLevel::Other, LineLevel::Error, LineLevel::Other, LineLevel::Warning}));
}

TEST(VisibleLinesTest, StopsAtEndOfRange) {
    StringArray lines;
    for(int i = 0; i != 10; ++i)
        lines.append(tagged("info").c_str(), -1);
    EXPECT_EQ(visits(lines, All, 0, 2), (Visits{{0, 0}, {1, 1}}));
    EXPECT_TRUE(visits(lines, All, 0, 0).empty());
}

TEST(VisibleLinesTest, LinesFarAboveAreNotVisited) {
    StringArray lines;
    for(int i = 0; i != 10000; ++i)
        lines.append(tagged("info").c_str(), -1);
    const Visits visited = visits(lines, All, 9990, 10000);
    EXPECT_EQ(visited.back(), (Visits::value_type{9999, 9999}));
    EXPECT_LT(visited.size(), 200);
}

/* 5000 bytes could be 5000 newlines, and then the line would be drawn down to row 5010 */
TEST(VisibleLinesTest, LongLineAboveIsVisited) {
    StringArray lines;
    for(int i = 0; i != 20000; ++i)
        lines.append(tagged("info", i == 10 ? 5000 : 40).c_str(), -1);
    EXPECT_EQ(visits(lines, All, 4000, 4001).front(), (Visits::value_type{10, 10}));
    EXPECT_EQ(visits(lines, {true, false, true}, 4000, 4001).front(), (Visits::value_type{10, 10}));
    EXPECT_NE(visits(lines, All, 15000, 15001).front(), (Visits::value_type{10, 10}));
}

TEST(VisibleLinesTest, VisitsAllThatCanReachRange) {
    std::mt19937 random{7};
    for(int run = 0; run != 300; ++run) {
        StringArray lines;
        constexpr const char* Tags[]{"info", "warn", "error"};
        for(unsigned i = random() % 1000; i; --i)
            lines.append(
                tagged(Tags[random() % 3], 32 + (random() % 50 ? 0 : random() % 900)).c_str(), -1);
        const ShownLevels levels{random() % 3 != 0, random() % 3 != 0, random() % 3 != 0};
        const std::size_t first = random() % 1000;
        const std::size_t end = first + random() % 40;

        Visits expected;
        std::size_t row = 0;
        for(std::size_t i = 0; i != lines.size(); ++i) {
            const std::string tag{lines.get(i) + 26, 4};
            if(!(tag == "erro" ? levels.errors : tag == "warn" ? levels.warnings : levels.info))
                continue;
            if(row < end && row + lines.sizeOf(i) >= first)
                expected.emplace_back(i, row);
            ++row;
        }
        const Visits visited = visits(lines, levels, first, end);
        for(const auto& i: expected)
            ASSERT_TRUE(std::find(visited.begin(), visited.end(), i) != visited.end());
        ASSERT_TRUE(std::is_sorted(visited.begin(), visited.end()));
    }
}

}
