#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/console/shownText.h"

using namespace Corrade;
using namespace QuillmereEngine;

namespace {

const std::string Prefix = "[2024-03-07 09:05:02.045]";
const std::string Error = Prefix + "[error] e";
const std::string Warning = Prefix + "[warn] w";
const std::string Info = Prefix + "[info] i";
const std::string Verbose = Prefix + "[verbose] v";
const std::string Untagged = "a line that somebody else wrote, without a prefix";

StringArray store() {
    StringArray out;
    for(const std::string& line: {Error, Warning, Info, Verbose, Untagged})
        out.append(line.c_str(), -1);
    return out;
}

struct Case {
    const char* name;
    ShownLevels levels;
    std::vector<std::string> lines;
};

void PrintTo(const Case& value, std::ostream* const out) { *out << value.name; }

std::string joined(const std::vector<std::string>& lines) {
    std::string out;
    for(const std::string& line: lines)
        out += (out.empty() ? "" : "\n") + line;
    return out;
}

class ShownTextTest: public testing::TestWithParam<Case> {};

TEST_P(ShownTextTest, KeepsLinesByBoxes) {
    const Containers::Array<char> text = shownText(store(), GetParam().levels);
    ASSERT_EQ(text.isEmpty(), GetParam().lines.empty());
    if(!text.isEmpty()) {
        EXPECT_EQ(std::string(text.data(), text.size() - 1), joined(GetParam().lines));
        EXPECT_EQ(text.back(), '\0');
    }
}

TEST_P(ShownTextTest, PassesWholeStoreUnlessNothingIsShown) {
    const StringArray lines = store();
    const StringArrayView shown = shownLines(lines, GetParam().levels);
    EXPECT_EQ(shown.size(), GetParam().levels.isNone() ? 0 : lines.size());
}

/* Errors, warnings, info */
INSTANTIATE_TEST_SUITE_P(Boxes, ShownTextTest,
    testing::Values(Case{"All", {true, true, true}, {Error, Warning, Info, Verbose, Untagged}},
        Case{"NoErrors", {false, true, true}, {Warning, Info, Verbose, Untagged}},
        Case{"NoWarnings", {true, false, true}, {Error, Info, Verbose, Untagged}},
        Case{"NoInfo", {true, true, false}, {Error, Warning, Verbose, Untagged}},
        Case{"InfoOnly", {false, false, true}, {Info}},
        Case{"WarningsOnly", {false, true, false}, {Warning}},
        Case{"ErrorsOnly", {true, false, false}, {Error}}, Case{"None", {false, false, false}, {}}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(ShownTextTest, EmptyStoreGivesEmptyText) {
    EXPECT_TRUE(shownText(StringArray{}, {true, true, true}).isEmpty());
    EXPECT_TRUE(shownText(StringArray{}, {false, true, true}).isEmpty());
}

TEST(ShownTextTest, NoLineLeftGivesEmptyText) {
    StringArray lines;
    lines.append(Error.c_str(), -1);
    EXPECT_TRUE(shownText(lines, {false, true, true}).isEmpty());
}

}
