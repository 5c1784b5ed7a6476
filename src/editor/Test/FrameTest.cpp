#include "editor/script/Frame.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "editor/script/Message.h"
#include "editor/script/ScriptProtocol.h"

using namespace std::string_literals;

namespace QuillmereEngine { namespace {

constexpr std::size_t MaxSize = 300;

TEST(FrameTest, SizeComesLowestByteFirst) {
    EXPECT_EQ(encodedFrame("abc"), "\3\0\0\0abc"s);
    EXPECT_EQ(encodedFrame(std::string(0x201, 'x')).substr(0, 4), "\1\2\0\0"s);
    EXPECT_EQ(encodedFrame(""), "\0\0\0\0"s);
}

TEST(FrameTest, FramesArePutTogetherFromSingleBytes) {
    FrameReader reader{MaxSize};
    const std::string bytes = encodedFrame("first") + encodedFrame("") + encodedFrame("last\0one"s);
    std::vector<std::string> frames;
    for(const char byte: bytes) {
        reader.append({&byte, 1});
        while(const std::optional<std::string> frame = reader.next())
            frames.push_back(*frame);
    }
    EXPECT_EQ(frames, (std::vector<std::string>{"first", "", "last\0one"s}));
    EXPECT_FALSE(reader.isInFrame());
    EXPECT_EQ(reader.problem(), "");
}

TEST(FrameTest, SeveralFramesInOnePieceComeOneByOne) {
    FrameReader reader{MaxSize};
    reader.append(encodedFrame("a") + encodedFrame("b") + encodedFrame("c").substr(0, 4));
    EXPECT_EQ(reader.next(), "a");
    EXPECT_EQ(reader.next(), "b");
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.isInFrame());
    reader.append("c");
    EXPECT_EQ(reader.next(), "c");
}

TEST(FrameTest, GreatestSizeIsTaken) {
    FrameReader reader{MaxSize};
    const std::string content(MaxSize, 'x');
    reader.append(encodedFrame(content));
    EXPECT_EQ(reader.next(), content);
}

TEST(FrameTest, LargerFrameEndsTheConnectionBeforeItsContent) {
    FrameReader reader{MaxSize};
    reader.append(encodedFrame("a") + encodedFrame(std::string(MaxSize + 1, 'x')).substr(0, 4));
    EXPECT_EQ(reader.next(), "a");
    EXPECT_EQ(reader.problem(), "");
    EXPECT_FALSE(reader.next());
    EXPECT_EQ(reader.problem(), "a message of 301 bytes, the most is 300");
    /* Nothing behind it is a frame any more */
    reader.append(std::string(1000, '\0'));
    EXPECT_FALSE(reader.next());
}

TEST(FrameTest, HighestSizeIsNoNegativeOne) {
    FrameReader reader{MaxFrameSize};
    reader.append("\xff\xff\xff\xff");
    EXPECT_FALSE(reader.next());
    EXPECT_EQ(reader.problem(), "a message of 4294967295 bytes, the most is 67108864");
}

TEST(MessageTest, MembersComeBack) {
    const std::optional<Message> message = Message::parse(
        MessageWriter{"log"}.add("level", 2).add("text", "a\"\n\0b"s).add("flag", true).text());
    ASSERT_TRUE(message);
    EXPECT_EQ(message->type(), "log");
    EXPECT_EQ(message->number("level", 7), 2);
    EXPECT_EQ(message->text("text"), "a\"\n\0b"s);
    EXPECT_TRUE(message->flag("flag"));
}

TEST(MessageTest, WhatIsMissingOrOfAnotherKindHasADefault) {
    const std::optional<Message> message = Message::parse(R"({"type": "x", "a": 1.5, "b": []})");
    ASSERT_TRUE(message);
    EXPECT_EQ(message->text("a"), "");
    EXPECT_FALSE(message->hasText("a"));
    EXPECT_EQ(message->number("a", 7), 7);
    EXPECT_EQ(message->number("c", 8), 8);
    EXPECT_FALSE(message->flag("b"));
}

TEST(MessageTest, WhatIsNoMessageIsNone) {
    for(const char* const text:
        {"", "{", "[]", "1", "{}", R"({"type": 1})", R"({"type": "a"} x)", "{\"type\": \"\xff\"}"})
        EXPECT_FALSE(Message::parse(text)) << text;
    /* Deeper than a parser that calls itself could go */
    EXPECT_FALSE(Message::parse(std::string(1000000, '[')));
    EXPECT_TRUE(Message::parse(
        R"({"type": "a", "b": )" + std::string(1000000, '[') + std::string(1000000, ']') + "}"));
}

}}
