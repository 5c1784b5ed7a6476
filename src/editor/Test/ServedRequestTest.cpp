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

}}
