#include "editor/ServedRequest.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using namespace std::string_literals;
using std::chrono::microseconds;

std::string message(const std::string& line) {
    return requestMessage({line, 404, 12, microseconds{1234}, false});
}

TEST(ServedRequestTest, MessageHasAllOfIt) {
    EXPECT_EQ(requestMessage(
                  {"GET /a%20b.png?c=d HTTP/1.1\r", 200, 5'000'000'000, microseconds{440}, false}),
        "GET /a%20b.png?c=d 200 5000000000 bytes 0.4 ms");
}

TEST(ServedRequestTest, MessageSaysWhatBrokeOff) {
    EXPECT_EQ(requestMessage({"GET /a HTTP/1.1", 200, 7, microseconds{12'000}, true}),
        "GET /a 200 7 bytes 12.0 ms, broken off");
}

TEST(ServedRequestTest, WhatIsMissingIsADash) {
    EXPECT_EQ(message(""), "- - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message("\r\n"), "- - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message("GET"), "GET - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message("GET "), "GET - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message("GET  /a"), "GET - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message(" /a"), "- - 404 12 bytes 1.2 ms");
    EXPECT_EQ(requestMessage({"GET /a", 0, 0, microseconds{0}, false}), "GET /a - 0 bytes 0.0 ms");
}

TEST(ServedRequestTest, WhatIsNoMethodIsNotShown) {
    EXPECT_EQ(message("\x16\x03\x01 /a b"), "- - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message("[error] /a"), "- - 404 12 bytes 1.2 ms");
    EXPECT_EQ(message(std::string(33, 'A') + " /a"), "- - 404 12 bytes 1.2 ms");
    EXPECT_EQ(
        message(std::string(32, 'A') + " /a"), std::string(32, 'A') + " /a 404 12 bytes 1.2 ms");
}

TEST(ServedRequestTest, PathCannotBreakOrFakeALine) {
    EXPECT_EQ(message("GET /a\rb\x1b[2J HTTP/1.1"), "GET /a\\x0db\\x1b[2J 404 12 bytes 1.2 ms");
}

TEST(ServedRequestTest, LevelFollowsTheStatus) {
    for(const int status: {100, 200, 206, 302, 399})
        EXPECT_EQ(requestLevel(status), LogLevel::Info) << status;
    for(const int status: {0, 400, 404, 499})
        EXPECT_EQ(requestLevel(status), LogLevel::Warn) << status;
    for(const int status: {500, 503, 599})
        EXPECT_EQ(requestLevel(status), LogLevel::Error) << status;
}

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

TEST(ServedRequestTest, LongTextIsCutBetweenCharacters) {
    EXPECT_EQ(escapedForLog(std::string(1000, 'a')), std::string(1000, 'a'));
    EXPECT_EQ(escapedForLog(std::string(1500, 'a')), std::string(1000, 'a') + "\\...(500_more)");
    EXPECT_EQ(escapedForLog(std::string(999, 'a') + "\xc3\xbc/"),
        std::string(999, 'a') + "\xc3\xbc\\...(1_more)");
}

}}
