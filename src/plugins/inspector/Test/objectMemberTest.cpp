#include "plugins/inspector/objectMember.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

namespace QuillmereEngine { namespace {

rapidjson::Document parsed(const std::string& json) {
    rapidjson::Document out;
    out.Parse(json.c_str());
    EXPECT_FALSE(out.HasParseError()) << json;
    return out;
}

struct ShapedValue {
    const char* name;
    const char* json;
    ValueShape shape;
};

struct ShapeOfTest: ::testing::TestWithParam<ShapedValue> {};

TEST_P(ShapeOfTest, FollowsTheJson) {
    EXPECT_EQ(shapeOf(parsed(GetParam().json)), GetParam().shape);
}

constexpr ShapedValue ShapedValues[]{
    {"Null", "null", ValueShape::Null},
    {"False", "false", ValueShape::Boolean},
    {"True", "true", ValueShape::Boolean},
    {"LeastInteger", "-2147483648", ValueShape::Integer},
    {"GreatestInteger", "2147483647", ValueShape::Integer},
    {"TooGreatInteger", "2147483648", ValueShape::Number},
    {"Double", "1.0", ValueShape::Number},
    {"Text", "\"\"", ValueShape::Text},
    {"OneNumber", "[1.5]", ValueShape::Array},
    {"TwoIntegers", "[1, 2]", ValueShape::Integers},
    {"FourIntegers", "[1, 2, 3, 4]", ValueShape::Integers},
    {"FiveIntegers", "[1, 2, 3, 4, 5]", ValueShape::Array},
    {"OneDouble", "[1, 2.0, 3]", ValueShape::Numbers},
    {"OneGreatInteger", "[1, 4294967296]", ValueShape::Numbers},
    {"NumberAndText", "[1, \"2\"]", ValueShape::Array},
    {"OneText", "[\"a\"]", ValueShape::Texts},
    {"ManyTexts", "[\"a\", \"b\", \"c\", \"d\", \"e\"]", ValueShape::Texts},
    {"EmptyArray", "[]", ValueShape::Array},
    {"Object", "{}", ValueShape::Object},
};

INSTANTIATE_TEST_SUITE_P(All, ShapeOfTest, ::testing::ValuesIn(ShapedValues),
    [](const auto& row) { return row.param.name; });

TEST(EscapedKeyTest, SeparatorsAreEscaped) {
    EXPECT_EQ(escapedKey("name"), "name");
    EXPECT_EQ(escapedKey("a/b~c/~"), "a~1b~0c~1~0");
    EXPECT_EQ(escapedKey(""), "");
}

TEST(MembersOfTest, MembersOfAnObjectInTheirOrder) {
    const auto members = membersOf(parsed(R"({"b": {"x": 1}, "a": [1, 2], "": null})"), 10);
    ASSERT_EQ(members.size(), 3);
    EXPECT_EQ(members[0].key, "b");
    EXPECT_EQ(members[0].shape, ValueShape::Object);
    EXPECT_EQ(members[0].size, 1);
    EXPECT_EQ(members[1].key, "a");
    EXPECT_EQ(members[1].size, 2);
    EXPECT_EQ(members[2].key, "");
    EXPECT_EQ(members[2].size, 0);
}

TEST(MembersOfTest, ElementsOfAnArrayByTheirIndex) {
    const auto elements = membersOf(parsed("[true, \"x\", [3]]"), 10);
    ASSERT_EQ(elements.size(), 3);
    EXPECT_EQ(elements[2].key, "2");
    EXPECT_EQ(elements[2].shape, ValueShape::Array);
}

TEST(MembersOfTest, NoMoreThanAskedFor) {
    EXPECT_EQ(membersOf(parsed("[1, 2, 3]"), 2).size(), 2);
    EXPECT_EQ(membersOf(parsed(R"({"a": 1, "b": 2})"), 1).size(), 1);
    EXPECT_TRUE(membersOf(parsed("[1]"), 0).empty());
}

TEST(MembersOfTest, KeyWithANulIsLeftOut) {
    const auto members = membersOf(parsed(R"({"a\u0000b": 1, "c": 2})"), 10);
    ASSERT_EQ(members.size(), 1);
    EXPECT_EQ(members[0].key, "c");
}

TEST(MembersOfTest, OtherValuesHaveNone) {
    for(const char* const json: {"null", "true", "1", "\"text\""})
        EXPECT_TRUE(membersOf(parsed(json), 10).empty()) << json;
}

}}
