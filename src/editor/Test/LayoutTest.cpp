#include "editor/Layout.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

bool operator==(const PanelRectangle& a, const PanelRectangle& b) {
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

struct Fit {
    const char* name;
    PanelRectangle from;
    WorkArea fromArea, toArea;
    PanelRectangle to;
};

struct FitTest: ::testing::TestWithParam<Fit> {};

TEST_P(FitTest, KeepsTheShareOfTheArea) {
    const PanelRectangle out = fitted(GetParam().from, GetParam().fromArea, GetParam().toArea);
    EXPECT_TRUE(out == GetParam().to)
        << out.x << "," << out.y << " " << out.width << "x" << out.height;
}

const Fit Fits[]{
    {"SameArea", {1, 2, 300, 400}, {640, 480}, {640, 480}, {1, 2, 300, 400}},
    {"WholeArea", {0, 0, 1280, 697}, {1280, 697}, {640, 337}, {0, 0, 640, 337}},
    {"RightHalf", {50, 0, 50, 100}, {100, 100}, {333, 77}, {167, 0, 166, 77}},
    {"LeftHalfMeetsIt", {0, 0, 50, 100}, {100, 100}, {333, 77}, {0, 0, 167, 77}},
    {"LeastSize", {0, 0, 40, 40}, {1000, 1000}, {100, 100}, {0, 0, 32, 32}},
    {"NoAreaBefore", {1, 2, 300, 400}, {0, 0}, {640, 480}, {1, 2, 300, 400}},
    {"HugeNumbers", {2147483647, -2147483647, 2147483647, 1}, {1, 1}, {16384, 16384},
        {32767, -32768, 32, 32}},
};

INSTANTIATE_TEST_SUITE_P(
    All, FitTest, ::testing::ValuesIn(Fits), [](const auto& row) { return row.param.name; });

constexpr const char* Settings = R"([Window][Console]
Pos=0,0
Size=100,200
Collapsed=0

[Window][Other]
Pos=50,100
Size=50,100
Collapsed=1

[Quillmere][WorkArea]
Size=100,200
)";

TEST(LayoutTest, ScalesEveryWindowAndTheArea) {
    EXPECT_EQ(fittedLayout(Settings, {200, 300}), R"([Window][Console]
Pos=0,0
Size=200,300
Collapsed=0

[Window][Other]
Pos=100,150
Size=100,150
Collapsed=1

[Quillmere][WorkArea]
Size=200,300
)");
}

TEST(LayoutTest, AreaMayComeFirst) {
    EXPECT_EQ(fittedLayout(
                  "[Quillmere][WorkArea]\nSize=10,10\n[Window][A]\nPos=5,0\nSize=5,10", {100, 100}),
        "[Quillmere][WorkArea]\nSize=100,100\n[Window][A]\nPos=50,0\nSize=50,100\n");
}

TEST(LayoutTest, WithoutAreaNothingChanges) {
    for(const char* const settings: {"", "[Window][A]\nPos=1,2\nSize=30,40\n", "garbage",
            "[Quillmere][WorkArea]\nSize=x,y\n[Window][A]\nPos=1,2\n",
            "[Quillmere][WorkArea]\nSize=0,0\n[Window][A]\nPos=1,2\n"})
        EXPECT_EQ(fittedLayout(settings, {200, 300}), settings);
}

TEST(LayoutTest, SavedLayoutFitsAgain) {
    const std::string saved = layoutWithArea("[Window][A]\nPos=0,0\nSize=80,60\n\n", {80, 60});
    EXPECT_EQ(fittedLayout(saved, {160, 120}),
        "[Window][A]\nPos=0,0\nSize=160,120\n\n[Quillmere][WorkArea]\nSize=160,120\n");
}

}}
