#include "plugins/history/shortText.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/Change.h"

namespace QuillmereEngine { namespace {

std::string shortOf(const std::string& json, const std::size_t limit) {
    rapidjson::Document value;
    value.Parse(json.c_str());
    EXPECT_FALSE(value.HasParseError()) << json;
    return shortJson(value, limit);
}

struct ShortValue {
    const char* name;
    const char* json;
    std::size_t limit;
    const char* shown;
};

struct ShortJsonTest: ::testing::TestWithParam<ShortValue> {};

TEST_P(ShortJsonTest, EndsAtTheLimit) {
    EXPECT_EQ(shortOf(GetParam().json, GetParam().limit), GetParam().shown);
}

const ShortValue Values[]{
    {"Null", "null", 9, "null"},
    {"True", "true", 9, "true"},
    {"Integer", "-12", 9, "-12"},
    {"Double", "0.1", 9, "0.1"},
    {"SinglePrecision", "3.5999999046325684", 99, "3.6"},
    {"DoublePrecision", "3.5999999046325681", 99, "3.599999904632568"},
    {"LargeDouble", "1e300", 99, "1e+300"},
    {"NumberCut", "123456789", 4, "1234..."},
    {"String", "\"ab\"", 9, "\"ab\""},
    {"StringJustFits", "\"ab\"", 4, "\"ab\""},
    {"StringCut", "\"abc\"", 3, "\"ab..."},
    {"CodePointsAreNotCut", "\"\u00e4\u20ac\U0001f600x\"", 4, "\"\u00e4\u20ac\U0001f600..."},
    {"ControlsAreEscaped", R"("a\n\t\r\u0000\u001b\u007f")", 99, R"("a\n\t\r\u0000\u001b\u007f")"},
    {"QuotesAreEscaped", R"("\"\\/")", 99, R"("\"\\/")"},
    {"EmptyArray", "[]", 2, "[]"},
    {"Array", "[1,[2,{}],\"x\"]", 99, "[1,[2,{}],\"x\"]"},
    {"ArrayCut", "[1,2,3]", 4, "[1,2..."},
    {"Object", R"({"a":1,"b":{"c":[]}})", 99, R"({"a":1,"b":{"c":[]}})"},
    {"ObjectCut", R"({"name":1})", 4, R"({"na...)"},
    {"NestedCut", "[[[[[[[[]]]]]]]]", 5, "[[[[[..."},
    {"NoRoom", "[]", 0, "..."},
};

INSTANTIATE_TEST_SUITE_P(All, ShortJsonTest, ::testing::ValuesIn(Values),
    [](const auto& row) { return row.param.name; });

TEST(ShortTextTest, BrokenUtf8IsReplaced) {
    for(const char* const bytes: {"\xff", "\xc3", "\xe2\x82", "\xc0\x80", "\x80"}) {
        const rapidjson::Value value{rapidjson::StringRef(bytes)};
        const std::string shown = shortJson(value, 99);
        EXPECT_EQ(shown.substr(0, 4), "\"\xef\xbf\xbd") << shown;
    }
}

TEST(ShortTextTest, HugeValuesAreNotReadToTheirEnd) {
    /* Names of what isn't there, so that looking at it would be noticed by the sanitizers */
    const std::string text(100, 'x');
    const rapidjson::Value string{
        rapidjson::StringRef(text.data(), rapidjson::SizeType(1'000'000'000))};
    EXPECT_EQ(shortJson(string, 10), "\"xxxxxxxxx...");
    rapidjson::Document deep;
    rapidjson::Value* innermost = &deep.SetArray();
    for(int i = 0; i != 100'000; ++i) {
        innermost->PushBack(rapidjson::Value{rapidjson::kArrayType}, deep.GetAllocator());
        innermost = innermost->Begin();
    }
    EXPECT_EQ(shortJson(deep, 50), std::string(50, '[') + "...");
}

TEST(ShortTextTest, PathKeepsItsEnd) {
    EXPECT_EQ(shortPath("/a/name", 7), "/a/name");
    EXPECT_EQ(shortPath("/a/name", 5), ".../name");
    EXPECT_EQ(shortPath("", 5), "");
    /* The cut is in the middle of a character */
    EXPECT_EQ(shortPath("/\xe2\x82\xac/x", 4), ".../x");
    EXPECT_EQ(shortPath("/a\n\"b\x80", 99), "/a\\n\"b\xef\xbf\xbd");
}

TEST(ShortTextTest, PathOfAChangeMayLackItsNul) {
    Change change;
    EXPECT_EQ(pathOf(change), "");
    change.path = Corrade::Containers::Array<char>{Corrade::InPlaceInit, {'/', 'a', '\0'}};
    EXPECT_EQ(pathOf(change), "/a");
    change.path = Corrade::Containers::Array<char>{Corrade::InPlaceInit, {'/', 'a'}};
    EXPECT_EQ(pathOf(change), "/a");
}

}}
