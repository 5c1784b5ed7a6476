#include "host/jsonText.h"

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>

#include "host/RapidJsonUtils.h"

namespace QuillmereEngine { namespace Test {

namespace {

std::string nested(const std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

}

TEST(JsonTextTest, ErrorsHaveLineAndColumn) {
    const struct {
        const char* name;
        std::string text;
        const char* message;
        std::size_t line, column;
    } cases[]{{"empty", "", "The document is empty.", 1, 1},
        {"blank", " \n ", "The document is empty.", 2, 2},
        {"invalid value", "{\n  \"a\": ?\n}", "Invalid value.", 2, 8},
        {"comma", "{\"a\":1\n\"b\":2}", "Missing a comma or '}' after an object member.", 2, 1},
        {"code points", "[\"\xc3\xa4\xe2\x82\xac\" ?]",
            "Missing a comma or ']' after an array element.", 1, 7},
        {"byte order mark", "\xef\xbb\xbf[?]", "Invalid value.", 1, 2},
        {"cut off", "{\"a\":[1,", "Invalid value.", 1, 9},
        {"two values", "1 2", "The document root must not be followed by other values.", 1, 3},
        {"NUL behind it", std::string("[1]\0[2]", 7), "A NUL character outside of a string.", 1, 4},
        {"too large a number", "[1e999]", "Number too big to be stored in double.", 1, 2},
        {"just too large a number", "[0,-1.8e308]", "Number too big to be stored in double.", 1, 4},
        {"too deep", nested(MaxJsonDepth + 1), "Nested deeper than 10000 levels.", 1, 10001},
        {"too deep and open", std::string(3000000, '['), "Nested deeper than 10000 levels.", 1,
            10001}};
    for(const auto& row: cases) {
        rapidjson::Document out{rapidjson::kArrayType};
        JsonTextError error;
        EXPECT_FALSE(parseJson(row.text, out, error)) << row.name;
        EXPECT_EQ(error.message, row.message) << row.name;
        EXPECT_EQ(error.line, row.line) << row.name;
        EXPECT_EQ(error.column, row.column) << row.name;
        EXPECT_TRUE(out.IsArray()) << row.name;
    }
}

/* Zeros with a negative exponent used to be read by way of a shift by 64 bits */
TEST(JsonTextTest, NumbersKeepKindAndValue) {
    const struct {
        const char* text;
        const char* printed;
    } cases[]{{"0e-75", "0.0"}, {"-0e-5", "-0.0"}, {"0.0", "0.0"}, {"-0", "0"}, {"1e-400", "0.0"},
        {"-1e-99999999999999999999", "-0.0"}, {"2e-324", "0.0"}, {"3e-324", "5e-324"},
        {"1e2", "100.0"}, {"100.0", "100.0"}, {"1E+2", "100.0"}, {"-5", "-5"},
        {"9223372036854775808", "9223372036854775808"},
        {"18446744073709551616", "18446744073709551616.0"},
        {"-9223372036854775809", "-9223372036854775808.0"},
        {"0.1000000000000000055511151231257827021181583404541015625", "0.1"}};
    for(const auto& row: cases) {
        rapidjson::Document out;
        JsonTextError error;
        ASSERT_TRUE(parseJson(row.text, out, error)) << row.text << error.message;
        EXPECT_EQ(RapidJsonUtils::toJson(out), row.printed) << row.text;
    }
}

TEST(JsonTextTest, IntegersFitAllKindsTheyCan) {
    rapidjson::Document out;
    JsonTextError error;
    ASSERT_TRUE(parseJson("[1,-1,4294967295,-4294967296]", out, error));
    EXPECT_TRUE(out[0].IsInt() && out[0].IsUint() && out[0].IsInt64() && out[0].IsUint64());
    EXPECT_TRUE(out[1].IsInt() && out[1].IsInt64() && !out[1].IsUint() && !out[1].IsUint64());
    EXPECT_TRUE(!out[2].IsInt() && out[2].IsUint() && out[2].IsInt64() && out[2].IsUint64());
    EXPECT_TRUE(!out[3].IsInt() && !out[3].IsUint() && out[3].IsInt64() && !out[3].IsUint64());
}

TEST(JsonTextTest, TenThousandLevelsAreFine) {
    rapidjson::Document out;
    JsonTextError error;
    ASSERT_TRUE(parseJson(nested(MaxJsonDepth), out, error)) << error.message;
    EXPECT_TRUE(isJsonDepthValid(out));
    rapidjson::Value outer{rapidjson::kArrayType};
    outer.PushBack(static_cast<rapidjson::Value&>(out), out.GetAllocator());
    EXPECT_FALSE(isJsonDepthValid(outer));
}

TEST(JsonTextTest, SiblingsDontAddUpToDepth) {
    std::string text = "[";
    for(std::size_t i = 0; i != MaxJsonDepth + 10; ++i)
        text += "[{}],";
    text += "0]";
    rapidjson::Document out;
    JsonTextError error;
    EXPECT_TRUE(parseJson(text, out, error)) << error.message;
    EXPECT_TRUE(isJsonDepthValid(out));
}

TEST(JsonTextTest, DuplicateMembersAreKeptAndNamed) {
    const struct {
        const char* json;
        const char* path;
    } cases[]{{R"({"a":1,"a":2})", "/a"}, {R"({"a":1,"b":2})", ""}, {"[1,1]", ""}, {"5", ""},
        {R"({"a":{"c":0},"b":[{"c":1},[],{"~/":1,"x":[],"~/":2}]})", "/b/2/~0~1"},
        {R"({"":{"":0,"":1}})", "//"}, {R"({"a":[{"b":1},{"b":2}]})", ""}};
    for(const auto& row: cases) {
        rapidjson::Document out;
        JsonTextError error;
        ASSERT_TRUE(parseJson(row.json, out, error)) << row.json;
        EXPECT_EQ(duplicateMember(out), row.path) << row.json;
        EXPECT_EQ(RapidJsonUtils::toJson(out), row.json);
    }
}

}}
