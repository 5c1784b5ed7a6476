#include <cstring>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "common/StringArrayView.h"
#include "plugins/console/LineClassification.h"

using namespace QuillmereEngine;

namespace {

const std::string Prefix = "[2024-03-07 09:05:02.045]";

struct Case {
    const char* name;
    std::string line;
    bool error, warning, info;
};

void PrintTo(const Case& value, std::ostream* const out) { *out << value.name; }

class LineClassificationTest: public testing::TestWithParam<Case> {};

TEST_P(LineClassificationTest, LooksForTagBehindPrefixOnly) {
    StringArray lines;
    lines.append(GetParam().line.c_str(), -1);
    EXPECT_EQ(isError(lines.get(0)), GetParam().error);
    EXPECT_EQ(isWarning(lines.get(0)), GetParam().warning);
    EXPECT_EQ(isInfo(lines.get(0)), GetParam().info);
}

INSTANTIATE_TEST_SUITE_P(Lines, LineClassificationTest,
    testing::Values(Case{"Error", Prefix + "[error] x", true, false, false},
        Case{"Warning", Prefix + "[warn] x", false, true, false},
        Case{"Info", Prefix + "[info] x", false, false, true},
        Case{"Verbose", Prefix + "[verbose] x", false, false, false},
        Case{"TagIsWholeLine", Prefix + "[error]", true, false, false},
        Case{"TagIsCutOff", Prefix + "[error", false, false, false},
        Case{"TagHasOtherLastCharacter", Prefix + "[error)", false, false, false},
        Case{"LongerWord", Prefix + "[errors]", false, false, false},
        Case{"UpperCase", Prefix + "[ERROR] x", false, false, false},
        Case{"TagOneTooEarly", Prefix.substr(1) + "[error] x", false, false, false},
        Case{"TagOneTooLate", Prefix + " [error] x", false, false, false},
        Case{"TagInMessage", Prefix + "[info] [error] x", false, false, true},
        Case{"NoPrefix", "[error] x", false, false, false}, Case{"Empty", "", false, false, false}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(LineClassificationTest, NothingBehindTagMatters) {
    std::string line = Prefix + "[warn]";
    for(int i = 0; i != 256; ++i) {
        line.resize(Prefix.size() + 6);
        line += char(i);
        EXPECT_TRUE(isWarning(line.c_str())) << i;
    }
}

TEST(LineClassificationTest, CharacterBeforeTagDoesNotMatter) {
    for(int i = 1; i != 256; ++i) {
        std::string line = Prefix + "[error]";
        line[24] = char(i);
        EXPECT_TRUE(isError(line.c_str())) << i;
    }
}

/* A line that ends before its index 25 is judged by what follows it in the store */
TEST(LineClassificationTest, ShortLineIsJudgedByFollowingBytes) {
    StringArray lines;
    lines.append("short", -1);
    lines.append("19 characters, and:[error]", -1);
    EXPECT_TRUE(isError(lines.get(0)));
    EXPECT_FALSE(isError(lines.get(1)));
}

TEST(LineClassificationTest, LastLineOfStoreMayBeEmpty) {
    StringArray lines;
    lines.append("", 0);
    EXPECT_FALSE(isError(lines.get(0)));
    EXPECT_FALSE(isWarning(lines.get(0)));
    EXPECT_FALSE(isInfo(lines.get(0)));
}

TEST(LineClassificationTest, AgreesWithStrncmpOnRandomBytes) {
    std::mt19937 random{1};
    constexpr char Alphabet[]{'[', ']', 'e', 'r', 'o', 'w', 'a', 'n', 'i', 'f', '\0', '\xff'};
    constexpr const char* Tags[]{"[error]", "[warn]", "[info]"};
    for(int i = 0; i != 200000; ++i) {
        char line[33]{};
        std::memcpy(line + 25, Tags[random() % 3], 6 + random() % 2);
        for(unsigned changes = random() % 3; changes; --changes)
            line[24 + random() % 8] = Alphabet[random() % sizeof(Alphabet)];
        ASSERT_EQ(isError(line), std::strncmp(line + 25, "[error]", 7) == 0) << line + 25;
        ASSERT_EQ(isWarning(line), std::strncmp(line + 25, "[warn]", 6) == 0) << line + 25;
        ASSERT_EQ(isInfo(line), std::strncmp(line + 25, "[info]", 6) == 0) << line + 25;
    }
}

}
