#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/console/RowPositions.h"

using namespace QuillmereEngine;

namespace {

struct Case {
    const char* name;
    float origin;
    float height;
    std::size_t rowCount;
};

void PrintTo(const Case& value, std::ostream* const out) { *out << value.name; }

class RowPositionsTest: public testing::TestWithParam<Case> {
protected:
    std::vector<float> sums() const {
        std::vector<float> out{GetParam().origin};
        while(out.size() != GetParam().rowCount)
            out.push_back(out.back() + GetParam().height);
        return out;
    }
};

TEST_P(RowPositionsTest, GivesSumsOfHeights) {
    RowPositions positions{GetParam().origin, GetParam().height};
    const std::vector<float> expected = sums();
    for(std::size_t row = 0; row != expected.size(); ++row)
        ASSERT_EQ(positions.position(row), expected[row]) << row;
}

TEST_P(RowPositionsTest, JumpGivesTheSame) {
    const std::vector<float> expected = sums();
    for(std::size_t row = 0; row < expected.size(); row += 1 + expected.size() / 37) {
        RowPositions positions{GetParam().origin, GetParam().height};
        ASSERT_EQ(positions.position(row), expected[row]) << row;
    }
}

TEST_P(RowPositionsTest, FindsFirstRowThatIsNotAbove) {
    const RowPositions positions{GetParam().origin, GetParam().height};
    const std::vector<float> expected = sums();
    for(std::size_t row = 0; row < expected.size(); row += 1 + expected.size() / 37)
        for(const float y: {expected[row], std::nextafter(expected[row], -1.0e9f),
                std::nextafter(expected[row], 1.0e9f), expected[row] + 0.5f}) {
            std::size_t first = 0;
            while(first != expected.size() && expected[first] < y)
                ++first;
            ASSERT_EQ(positions.firstNotAbove(y, expected.size()), first) << row << y;
        }
}

INSTANTIATE_TEST_SUITE_P(Rows, RowPositionsTest,
    testing::Values(Case{"FewWhole", 12.0f, 13.0f, 100},
        Case{"ScrolledFarWhole", -1300000.0f, 13.0f, 100100},
        Case{"BeyondWholeFloats", 16777000.0f, 13.0f, 500},
        Case{"FromBelowWholeFloats", -16777300.0f, 13.0f, 500},
        Case{"FractionalHeight", -5000.0f, 14.3f, 1000},
        Case{"FractionalOrigin", -99999.7f, 13.0f, 10000}, Case{"TinyHeight", 3.0f, 0.01f, 1000}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(RowPositionsTest, NoRowIsAtOrBelowFarY) {
    EXPECT_EQ((RowPositions{0.0f, 13.0f}.firstNotAbove(1.0e30f, 1000)), 1000);
    EXPECT_EQ((RowPositions{0.0f, 13.0f}.firstNotAbove(-1.0e30f, 1000)), 0);
}

/* Adding a row's height changes nothing any more up there, so a search must end by the count */
TEST(RowPositionsTest, StuckSumEnds) {
    EXPECT_EQ((RowPositions{1.0e12f, 13.0f}.firstNotAbove(2.0e12f, 1000)), 1000);
}

}
