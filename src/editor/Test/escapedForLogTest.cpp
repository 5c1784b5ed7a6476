#include "editor/escapedForLog.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using namespace std::string_literals;

struct EscapeCase {
    const char* name;
    std::string text, expected;
};

struct EscapedForLogTest: ::testing::TestWithParam<EscapeCase> {};

TEST_P(EscapedForLogTest, ShowsIt) {
    EXPECT_EQ(escapedForLog(GetParam().text), GetParam().expected);
}

const EscapeCase EscapeCases[]{
    {"Empty", "", ""},
    {"Ascii", "/a-Z_0~%20?x=[1]", "/a-Z_0~%20?x=[1]"},
    {"Letters", "/\xc3\xbc\xe6\x97\xa5\xf0\x9f\x98\x80", "/\xc3\xbc\xe6\x97\xa5\xf0\x9f\x98\x80"},
    {"Controls", "\x01\n\r\t\x1b\x7f", "\\x01\\x0a\\x0d\\x09\\x1b\\x7f"},
    {"Nul", "a\0b"s, "a\\x00b"},
    {"Space", "a b", "a\\x20b"},
    {"Backslash", "\\x0a", "\\\\x0a"},
    {"SecondControls", "\xc2\x85\xc2\x9b", "\\u{85}\\u{9b}"},
    {"OtherSpaces", "\xc2\xa0\xe3\x80\x80", "\\u{a0}\\u{3000}"},
    {"LineSeparators", "\xe2\x80\xa8\xe2\x80\xa9", "\\u{2028}\\u{2029}"},
    {"Directions", "\xe2\x80\xae\xe2\x81\xa6\xd8\x9c", "\\u{202e}\\u{2066}\\u{61c}"},
    {"ZeroWidth", "\xe2\x80\x8b\xef\xbb\xbf\xc2\xad", "\\u{200b}\\u{feff}\\u{ad}"},
    {"Tags", "\xf3\xa0\x81\x81", "\\u{e0041}"},
    {"Noncharacters", "\xef\xbf\xbe\xf0\x9f\xbf\xbf", "\\u{fffe}\\u{1ffff}"},
    {"LoneContinuation", "\x80", "\\x80"},
    {"CutSequence", "\xe2\x80", "\\xe2\\x80"},
    {"CutByAnotherCharacter", "\xe2\x80/", "\\xe2\\x80/"},
    {"Overlong", "\xc0\xae\xe0\x80\xaf\xf0\x80\x80\xaf",
        "\\xc0\\xae\\xe0\\x80\\xaf\\xf0\\x80\\x80\\xaf"},
    {"Surrogate", "\xed\xa0\x80", "\\xed\\xa0\\x80"},
    {"BehindTheLastCharacter", "\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
    {"NoUtf8AtAll", "\xfe\xff", "\\xfe\\xff"},
};

INSTANTIATE_TEST_SUITE_P(, EscapedForLogTest, ::testing::ValuesIn(EscapeCases),
    [](const auto& row) { return std::string{row.param.name}; });

TEST(EscapedTextTest, LongOneIsCutBetweenCharacters) {
    EXPECT_EQ(escapedForLog(std::string(1000, 'a')), std::string(1000, 'a'));
    EXPECT_EQ(escapedForLog(std::string(1500, 'a')), std::string(1000, 'a') + "\\...(500_more)");
    EXPECT_EQ(escapedForLog(std::string(999, 'a') + "\xc3\xbc/"),
        std::string(999, 'a') + "\xc3\xbc\\...(1_more)");
}

TEST(WithoutControlsTest, WhatOnlyLooksOddStays) {
    /* With a family of joined pictures, and a letter with a variation */
    for(const char* const text:
        {"", "plain text, \\x0a\t\"tab\"", "\xc3\xbc\xe6\x97\xa5\xc2\xa0\xe3\x80\x80",
            "\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x91\xa7", "\xe2\x9d\xa4\xef\xb8\x8f"})
        EXPECT_EQ(withoutControls(text), text);
    EXPECT_EQ(withoutControls(std::string(5000, 'a')), std::string(5000, 'a'));
}

TEST(WithoutControlsTest, WhatHidesTextIsShown) {
    EXPECT_EQ(withoutControls("a\0b\rc\x1b[2K\x7f\n"s), "a\\x00b\\x0dc\\x1b[2K\\x7f\\x0a");
    EXPECT_EQ(withoutControls("\xc2\x9b\xe2\x80\xa8\xe2\x80\xae\xe2\x81\xa6\xd8\x9c\xe2\x80\x8f"),
        "\\u{9b}\\u{2028}\\u{202e}\\u{2066}\\u{61c}\\u{200f}");
    EXPECT_EQ(withoutControls("\xff\xe2\x80"), "\\xff\\xe2\\x80");
}

}}
