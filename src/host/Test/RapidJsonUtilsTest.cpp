#include "host/RapidJsonUtils.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <rapidjson/reader.h>

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

using RapidJsonUtils::toJson;
using RapidJsonUtils::toPrettyJson;

constexpr unsigned Flags = rapidjson::kParseFullPrecisionFlag | rapidjson::kParseIterativeFlag;

rapidjson::Document parsed(const std::string& json) {
    rapidjson::Document out;
    out.Parse<Flags>(json.data(), json.size());
    EXPECT_FALSE(out.HasParseError()) << json;
    return out;
}

double reread(const double value) {
    const rapidjson::Document out = parsed(toJson(rapidjson::Value{value}));
    EXPECT_TRUE(out.IsDouble()) << toJson(rapidjson::Value{value});
    return out.IsDouble() ? out.GetDouble() : 0.0;
}

std::uint64_t bitsOf(const double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

std::string nested(const std::size_t depth) {
    std::string out;
    for(std::size_t i = 0; i != depth; ++i)
        out += i % 2 ? R"({"a":)" : "[";
    out += "1";
    for(std::size_t i = depth; i--;)
        out += i % 2 ? "}" : "]";
    return out;
}

}

TEST(RapidJsonUtilsTest, EnumStringToValueFindsWholeNames) {
    const char* const names[]{"box", "sphere", "sphere"};
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("box", names), 0);
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("sphere", names), 1);
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("sph", names), -1);
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("", names), -1);
    EXPECT_EQ(RapidJsonUtils::enumStringToValue("box", {}), -1);
}

TEST(RapidJsonUtilsDeathTest, EnumStringToValueOfNull) {
    EXPECT_EXIT(RapidJsonUtils::enumStringToValue(nullptr, {}), testing::KilledBySignal(SIGABRT),
        "^RapidJsonUtils::enumStringToValue\\(\\): string was nullptr\n$");
}

TEST(RapidJsonUtilsTest, JsonIsCompactAndEscaped) {
    const char* const json =
        R"({"a":[1,-2,null,true,false,"\"\\\b\f\n\r\t\u0000\u001F/ä"],"b":{},"c":[],)"
        R"("":"","\n":18446744073709551615,"d":-9223372036854775808})";
    EXPECT_EQ(toJson(parsed(json)), json);
}

TEST(RapidJsonUtilsTest, DoublesStayDoubles) {
    const struct {
        double value;
        const char* json;
    } cases[]{{2.0, "2.0"}, {-0.0, "-0.0"}, {0.1, "0.1"}, {1e20, "1e+20"}, {100000.0, "1e+05"},
        {12345.0, "12345.0"}, {1.5e-7, "1.5e-07"},
        {-2.2250738585072014e-308, "-2.2250738585072014e-308"}, {5e-324, "5e-324"},
        {0.1f, "0.10000000149011612"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::infinity(), "null"},
        {-std::numeric_limits<double>::infinity(), "null"},
        {std::numeric_limits<double>::quiet_NaN(), "null"}};
    for(const auto& row: cases)
        EXPECT_EQ(toJson(rapidjson::Value{row.value}), row.json);
}

TEST(RapidJsonUtilsTest, DoublesReadBackBitForBit) {
    std::mt19937_64 random{1};
    for(int i = 0; i != 200000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof(value));
        if(std::isfinite(value)) {
            ASSERT_EQ(bitsOf(reread(value)), bits) << toJson(rapidjson::Value{value});
        }
        const double usual = std::ldexp(double(std::int32_t(bits)), int(bits >> 58) - 40);
        ASSERT_EQ(bitsOf(reread(usual)), bitsOf(usual)) << toJson(rapidjson::Value{usual});
    }
}

TEST(RapidJsonUtilsTest, IntegersKeepTheirKind) {
    for(const char* const json:
        {"0", "-1", "2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295",
            "4294967296", "9223372036854775807", "9223372036854775808"}) {
        const rapidjson::Document value = parsed(json);
        EXPECT_EQ(toJson(value), json);
        EXPECT_FALSE(value.IsDouble()) << json;
    }
}

TEST(RapidJsonUtilsTest, NanInTheMiddleLosesNothingBehindIt) {
    rapidjson::Document value = parsed("[1,2,3]");
    value[1].SetDouble(std::nan(""));
    EXPECT_EQ(toJson(value), "[1,null,3]");
    EXPECT_EQ(toPrettyJson(value), "[\n    1,\n    null,\n    3\n]\n");
}

TEST(RapidJsonUtilsTest, BytesThatAreNoUtf8PassThrough) {
    const std::string bytes = "a\xff\xc3";
    const rapidjson::Value value{rapidjson::StringRef(bytes.data(), 3)};
    EXPECT_EQ(toJson(value), "\"" + bytes + "\"");
    EXPECT_EQ(std::string{parsed(toJson(value)).GetString()}, bytes);
}

TEST(RapidJsonUtilsTest, PrettyJsonIndentsAndKeepsOrder) {
    EXPECT_EQ(toPrettyJson(parsed(R"({"b":1,"a":{"x":[1,{}],"y":[]}})")),
        "{\n    \"b\": 1,\n    \"a\": {\n        \"x\": [\n            1,\n            {}\n        "
        "],\n        \"y\": []\n    }\n}\n");
    EXPECT_EQ(toPrettyJson(parsed("2.0")), "2.0\n");
}

TEST(RapidJsonUtilsTest, DepthTakesNoStack) {
    const std::string json = nested(200000);
    const rapidjson::Document value = parsed(json);
    EXPECT_EQ(toJson(value), json);
    rapidjson::MemoryPoolAllocator<> pool;
    EXPECT_EQ(toJson(RapidJsonUtils::copy(value, pool)), json);
    EXPECT_LT(toPrettyJson(value).size(), 200 * json.size());
}

TEST(RapidJsonUtilsTest, PrintIsOneValue) {
    std::ostringstream out;
    Utility::Debug{&out} << "a" << parsed("[1, 2.0]") << "b";
    EXPECT_EQ(out.str(), "a [1,2.0] b\n");
}

TEST(RapidJsonUtilsTest, CopyHoldsNothingOfTheOriginal) {
    char text[] = "a text that is too long to be stored in a value";
    rapidjson::MemoryPoolAllocator<> pool;
    rapidjson::Value copies[3];
    {
        rapidjson::MemoryPoolAllocator<> original;
        rapidjson::Value string{rapidjson::StringRef(text)};
        rapidjson::Value flat{rapidjson::kArrayType}, tree{rapidjson::kObjectType};
        flat.PushBack(rapidjson::StringRef(text), original).PushBack(2.5, original);
        tree.AddMember(rapidjson::StringRef(text), rapidjson::StringRef(text), original);
        copies[0] = RapidJsonUtils::copy(string, pool);
        copies[1] = RapidJsonUtils::copy(flat, pool);
        copies[2] = RapidJsonUtils::copy(tree, pool);
        std::memset(text, '!', std::strlen(text));
    }
    const std::string kept = "\"a text that is too long to be stored in a value\"";
    EXPECT_EQ(toJson(copies[0]), kept);
    EXPECT_EQ(toJson(copies[1]), "[" + kept + ",2.5]");
    EXPECT_EQ(toJson(copies[2]), "{" + kept + ":" + kept + "}");
}

TEST(RapidJsonUtilsTest, CopyTakesJustTheMemoryItNeeds) {
    const rapidjson::Document flat = parsed("[1,2,3]"), tree = parsed(R"([{"a":1},[2]])");
    rapidjson::MemoryPoolAllocator<> pool;
    const rapidjson::Value first = RapidJsonUtils::copy(flat, pool);
    EXPECT_EQ(pool.Size(), 3 * sizeof(rapidjson::Value));
    const rapidjson::Value second = RapidJsonUtils::copy(tree, pool);
    EXPECT_EQ(pool.Size(), 8 * sizeof(rapidjson::Value));
    const rapidjson::Value empty = RapidJsonUtils::copy(parsed("[]"), pool);
    EXPECT_TRUE(empty.IsArray());
    EXPECT_EQ(pool.Size(), 8 * sizeof(rapidjson::Value));
}

}}
