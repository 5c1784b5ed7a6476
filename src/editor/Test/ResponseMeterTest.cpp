#include "editor/ResponseMeter.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

constexpr std::string_view Answer = "HTTP/1.1 206 Partial Content\r\nA: b\r\n\r\nbody\r\n\r\nmore";

TEST(ResponseMeterTest, NothingHasNoStatus) {
    const ResponseMeter meter;
    EXPECT_EQ(meter.status(), 0);
    EXPECT_EQ(meter.bodySize(), 0u);
}

TEST(ResponseMeterTest, PiecesAreAsTheWhole) {
    for(std::size_t size = 1; size <= Answer.size(); ++size) {
        ResponseMeter meter;
        for(std::size_t i = 0; i < Answer.size(); i += size)
            meter.pass(Answer.substr(i, size));
        EXPECT_EQ(meter.status(), 206) << size;
        EXPECT_EQ(meter.bodySize(), 12u) << size;
    }
}

TEST(ResponseMeterTest, CutHeadHasItsStatusWithItsFirstLine) {
    ResponseMeter meter;
    meter.pass("HTTP/1.1 404 Not Fo");
    EXPECT_EQ(meter.status(), 0);
    meter.pass("und\r\nContent-");
    EXPECT_EQ(meter.status(), 404);
    EXPECT_EQ(meter.bodySize(), 0u);
}

TEST(ResponseMeterTest, WholeAnswerHasAsMuchAsItsHeadSays) {
    using Body = ResponseMeter::Body;
    ResponseMeter meter;
    EXPECT_FALSE(meter.isWhole(Body::None));
    meter.pass("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n");
    EXPECT_FALSE(meter.isWhole(Body::None));
    meter.pass("\r\n");
    EXPECT_TRUE(meter.isWhole(Body::None));
    EXPECT_FALSE(meter.isWhole(Body::Expected));
    meter.pass("bod");
    EXPECT_FALSE(meter.isWhole(Body::Expected));
    meter.pass("y");
    EXPECT_TRUE(meter.isWhole(Body::Expected));
}

TEST(ResponseMeterTest, WhatIsNoAnswerHasNoStatus) {
    for(const char* const text:
        {"\n", "HTTP/1.1\r\n\r\n", "HTTP/1.1 abc\r\n\r\n", "nothing at all\n"}) {
        ResponseMeter meter;
        meter.pass(text);
        EXPECT_EQ(meter.status(), 0) << text;
    }
}

}}
